#include "QuickSave.h"
#include "core/CommandDispatcher.h"
#include "platform/PrivateFiles.h"
#include "platform/Shell.h"
#include "platform/TextWindow.h"
#include "platform/browser/BrowserView.h"

#include <QDir>
#include <QFile>
#include <QPointer>

QuickSave::QuickSave(QWidget& window, const MainState& state, platform::Dialogs& dialogs,
                     platform::Shell& shell, CommandDispatcher& commands)
    : window_(window), state_(state), dialogs_(dialogs), shell_(shell)
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
    const QString address = view.locationUrl();
    view.document().ask(QStringLiteral("document.documentElement.innerHTML"),
                        [this, address](const QVariant& markup) {
                            if (markup.typeId() != QMetaType::QString ||
                                !writeRecord(QStringLiteral("QuickSave.dat"), markup.toString()))
                                return;
                            shell_.start(state_.appDir + QStringLiteral("qsexdll"),
                                         {QStringLiteral("url:") + address});
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
