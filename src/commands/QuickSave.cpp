#include "QuickSave.h"
#include "core/CommandDispatcher.h"
#include "platform/Dialogs.h"
#include "platform/PrivateFiles.h"
#include "platform/Shell.h"
#include "platform/TextWindow.h"
#include "platform/browser/BrowserView.h"
#include "proxy/ForwardingProxy.h"

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QUrl>

QuickSave::QuickSave(QWidget& window, const MainState& state, platform::Dialogs& dialogs,
                     platform::Shell& shell, platform::BrowserViewFactory& engine,
                     CommandDispatcher& commands)
    : window_(window), state_(state), dialogs_(dialogs), shell_(shell), engine_(engine)
{
    commands.on(cmd::Command::QuickSave, [this](const CommandContext& c) { save(*c.view); });
    commands.on(cmd::Command::ViewText, [this](const CommandContext& c) { showText(*c.view); });
}

bool QuickSave::writeRecord(const QString& name, const QString& record) const
{
    // The hand-over file is rewritten each time, not kept: a plain truncating
    // write is what the reader expects.
    QDir().mkpath(savedFilesFolder());
    QFile file(savedFilesFolder() + name);
    return platform::openPrivate(file, QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write((record + u'\n').toUtf8()) >= 0;
}

void QuickSave::save(platform::BrowserView& view)
{
    if (!view.hasDocument() || view.locationUrl().isEmpty())
        return;
    if (engine_.connection().offline()) {
        dialogs_.message(QStringLiteral("Quick Save fetches the page's pictures and styles from "
                                        "the network, and the browser is working offline."),
                         platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Information);
        return;
    }
    // Any local user can read a command line: the address goes without its
    // sign-in, query and fragment, which can carry secrets and which the
    // saver does not need to find the page's pictures.
    const QString address =
        QUrl(view.locationUrl())
            .adjusted(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment)
            .toString();
    view.document().ask(QStringLiteral("document.documentElement.innerHTML"),
                        [this, address](const QVariant& markup) {
                            if (markup.typeId() != QMetaType::QString ||
                                !writeRecord(QStringLiteral("QuickSave.dat"), markup.toString()))
                                return;
                            // An environment is the user's alone: the proxy's secret goes
                            // there.
                            const proxy::ForwardingProxy& forwarder = engine_.forwardingProxy();
                            const QString proxy =
                                QStringLiteral("http://%1:%2@127.0.0.1:%3")
                                    .arg(proxy::ForwardingProxy::user(), forwarder.secret())
                                    .arg(forwarder.port());
                            // The saver writes into the user's folder, wherever
                            // the program itself lies.
                            shell_.start(state_.folder.helper(QStringLiteral("qsexdll")),
                                         {QStringLiteral("url:") + address},
                                         {{QLatin1String(proxyVariable), proxy},
                                          {QStringLiteral("QUB_APPDIR"), state_.folder.own()}});
                        });
}

void QuickSave::showText(platform::BrowserView& view)
{
    const QString title = view.title();
    auto show = [this, title](const QString& text) {
        if (!writeRecord(QStringLiteral("temp.dat"), text))
            return;
        QFile file(savedFilesFolder() + QStringLiteral("temp.dat"));
        // Read before the delete: the file is only the way the text travels.
        const QString written =
            file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        file.close();
        file.remove();
        (new platform::TextWindow(title, written, dialogs_, &window_))->show();
    };
    if (view.locationUrl().isEmpty() || !view.hasDocument()) {
        show(QStringLiteral(" "));
        return;
    }
    view.document().ask(QStringLiteral("document.documentElement.outerText"),
                        [show](const QVariant& text) { show(text.toString()); });
}
