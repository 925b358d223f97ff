#include "PageAgent.h"

#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QWebChannel>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>

// The script lives in a static library, whose resources are not registered
// by themselves.
static void registerAgentResource()
{
    Q_INIT_RESOURCE(pageagent);
}

namespace platform {

namespace {

QString readResource(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("missing resource %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

constexpr QLatin1String agentName{"qub-page-agent"};

// Subframes relay their records to the top frame with postMessage; the token
// marks the relay's messages. The top frame's agent swallows them before the
// page's listeners run, but a page that rewrites itself (document.open) takes
// the agent's listener away and can learn it: it grants nothing.
QString relayToken()
{
    return QString::number(QRandomGenerator::system()->generate64(), 36) +
           QString::number(QRandomGenerator::system()->generate64(), 36);
}

} // namespace

PageAgentBridge::PageAgentBridge(QWebEnginePage& page) : QObject(&page)
{
    auto* channel = new QWebChannel(&page);
    channel->registerObject(QStringLiteral("qubAgent"), this);
    page.setWebChannel(channel, QWebEngineScript::ApplicationWorld);
}

void PageAgentBridge::report(const QVariantMap& record)
{
    const PageClick click = pageClickFromRecord(record);
    if (click.kind == PageClick::Kind::MouseDown)
        emit pageMouseDown(click);
    else
        emit pageClicked(click);
}

void PageAgentBridge::linksCollected(int request, const QVariantList& documents)
{
    PageLinks links;
    for (const QVariant& document : documents) {
        QList<PageLink>& list = links.emplace_back();
        for (const QVariant& entry : document.toList()) {
            const QVariantList pair = entry.toList();
            if (pair.size() == 2)
                list.append({pair[0].toString(), pair[1].toString()});
        }
    }
    emit linksReady(request, links);
}

void installPageAgent(QWebEngineProfile& profile)
{
    registerAgentResource();
    QString source = readResource(QStringLiteral(":/qtwebchannel/qwebchannel.js"));
    source += readResource(QStringLiteral(":/qub/pageagent.js"))
                  .replace(QLatin1String("%RELAY_TOKEN%"), relayToken())
                  .replace(QLatin1String("%REMOVE_PICTURES%"), QLatin1String("false"))
                  .replace(QLatin1String("%REMOVE_FLASH%"), QLatin1String("false"));
    QWebEngineScript script;
    script.setName(agentName);
    script.setSourceCode(source);
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::ApplicationWorld);
    script.setRunsOnSubFrames(true);
    profile.scripts()->insert(script);
}

void setAgentRemoval(QWebEngineProfile& profile, bool pictures, bool flash)
{
    static const QRegularExpression flags(QStringLiteral("removeAtLoad = \\[\\w+, \\w+\\];"));
    const QString wanted = QStringLiteral("removeAtLoad = [%1, %2];")
                               .arg(QLatin1String(pictures ? "true" : "false"),
                                    QLatin1String(flash ? "true" : "false"));
    QWebEngineScriptCollection& scripts = *profile.scripts();
    const QList<QWebEngineScript> found = scripts.find(agentName);
    if (found.isEmpty() || found.first().sourceCode().contains(wanted))
        return;
    QWebEngineScript script = found.first();
    scripts.remove(script);
    script.setSourceCode(script.sourceCode().replace(flags, wanted));
    scripts.insert(script);
}

} // namespace platform
