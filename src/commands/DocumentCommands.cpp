#include "DocumentCommands.h"
#include "core/CommandDispatcher.h"
#include "platform/Dialogs.h"
#include "platform/browser/BrowserView.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QPointer>
#include <QRegularExpression>
#include <QStandardPaths>

using cmd::Command;
using platform::BrowserView;

namespace {

// A file name for the page from its title, in the downloads folder.
QString suggestedPath(const BrowserView& view)
{
    static const QRegularExpression unsafe(QStringLiteral("[\\\\/:*?\"<>|\\x00-\\x1f]+"));
    QString name = view.title().replace(unsafe, QStringLiteral(" ")).simplified().left(100);
    if (name.isEmpty())
        name = QStringLiteral("page");
    return QDir(QStandardPaths::writableLocation(QStandardPaths::DownloadLocation))
        .filePath(name + QStringLiteral(".html"));
}

platform::PrintingFacet::SaveFormat formatFor(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("mht") || suffix == QLatin1String("mhtml"))
        return platform::PrintingFacet::SaveFormat::WebArchive;
    return platform::PrintingFacet::SaveFormat::CompleteHtml;
}

// The facts of the properties box, gathered in one question to the page.
constexpr QLatin1String propertiesScript{R"((() => {
  const nav = performance.getEntriesByType('navigation')[0];
  return JSON.stringify({
    type: document.contentType,
    size: nav && nav.decodedBodySize ? nav.decodedBodySize
                                     : document.documentElement.outerHTML.length,
    modified: document.lastModified,
    charset: document.characterSet
  });
})())"};

QString lockText(int level)
{
    switch (level) {
    case 2:
        return QStringLiteral("Encrypted (HTTPS)");
    case 1:
        return QStringLiteral("Encrypted, with a certificate you let through");
    default:
        return QStringLiteral("Not encrypted");
    }
}

void showProperties(platform::Dialogs& dialogs, BrowserView& view)
{
    QPointer<BrowserView> asked(&view);
    view.document().ask(propertiesScript, [&dialogs, asked](const QVariant& answer) {
        if (!asked)
            return;
        const QJsonObject facts = QJsonDocument::fromJson(answer.toString().toUtf8()).object();
        if (facts.isEmpty())
            return;
        const QString address = asked->locationUrl();
        dialogs.showDetails(
            QStringLiteral("Properties"),
            {{QStringLiteral("Title"), asked->title()},
             {QStringLiteral("Address"), address},
             {QStringLiteral("Type"), facts.value(QStringLiteral("type")).toString()},
             {QStringLiteral("Size"),
              QLocale().formattedDataSize(qint64(facts.value(QStringLiteral("size")).toDouble()))},
             {QStringLiteral("Character set"), facts.value(QStringLiteral("charset")).toString()},
             {QStringLiteral("Modified"), facts.value(QStringLiteral("modified")).toString()},
             {QStringLiteral("Connection"), lockText(asked->security().lockLevel())}});
    });
}

// The body's "scroll" attribute says whether the page scrolls; the engine no
// longer reads it, so the page's overflow follows it.
constexpr QLatin1String scrollBarsScript{R"((() => {
  const body = document.body;
  if (!body) return;
  const off = body.getAttribute('scroll') !== 'no';
  body.setAttribute('scroll', off ? 'no' : 'yes');
  document.documentElement.style.overflow = off ? 'hidden' : '';
})())"};

constexpr QLatin1String designModeScript{
    "document.designMode = document.designMode.toLowerCase() === 'on' ? 'off' : 'on'"};

} // namespace

DocumentCommands::DocumentCommands(platform::Dialogs& dialogs, CommandDispatcher& commands)
{
    commands.on(Command::SaveAs, [&dialogs](const CommandContext& c) {
        QPointer<BrowserView> view = c.view;
        const QString path =
            dialogs.saveFileName(QStringLiteral("Save Web Page"), suggestedPath(*c.view));
        if (view && !path.isEmpty())
            view->printing().saveAs(path, formatFor(path));
    });
    commands.on(Command::PageSetup,
                [](const CommandContext& c) { c.view->printing().pageSetup(); });
    commands.on(Command::PrintPreview,
                [](const CommandContext& c) { c.view->printing().printPreview(); });
    commands.on(Command::Print, [](const CommandContext& c) { c.view->printing().print(); });
    commands.on(Command::Properties,
                [&dialogs](const CommandContext& c) { showProperties(dialogs, *c.view); });
    commands.on(Command::ScrollBars, [](const CommandContext& c) {
        c.view->document().ask(scrollBarsScript, [](const QVariant&) {});
    });
    commands.on(Command::DesignMode, [](const CommandContext& c) {
        c.view->document().ask(designModeScript, [](const QVariant&) {});
    });
}
