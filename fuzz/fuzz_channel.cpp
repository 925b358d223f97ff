// Any sequence of texts written into the companion channel (one per line):
// no crash; a text the browser acted on leaves the box empty, one it did not
// stays as written; no more tabs open than texts were written.
#include "FuzzSupport.h"
#include "app/MainWindow.h"
#include "core/Keys.h"
#include "support/Fakes.h"

#include <QApplication>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static int argc = 1;
    static char name[] = "fuzz_channel";
    static char* argv[] = {name, nullptr};
    // Made once and kept to the end of the process: torn down at its exit, the
    // window's threads would outlive the application object.
    static QApplication* app = new QApplication(argc, argv);
    static auto* dialogs = new ScriptedDialogs;
    static auto* shell = new RecordingShell;
    static auto* clock = new SettableClock;
    static auto* factory = new FakeViewFactory;
    static MainWindow* window = [] {
        const QString appDir = fuzz::scratchFile("app/");
        QDir().mkpath(appDir);
        QFile::copy(QStringLiteral(QUB_SKIN_FILE), appDir + "default.tb2");
        auto* made =
            new MainWindow(platform::ProgramFolder(appDir), *dialogs, *shell, *factory, *clock);
        if (!made->start({}))
            abort();
        return made;
    }();
    Q_UNUSED(app);
    MainWindow::Parts parts = window->parts();
    CompanionChannel& channel = parts.net.channel();
    const int tabsBefore = parts.bar.band(key::tabsBar)->count();
    const QList<QByteArray> lines =
        QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)).split('\n');
    for (const QByteArray& line : lines) {
        const QString text = QString::fromUtf8(line);
        channel.setText(text);
        const bool acts =
            text.startsWith(QLatin1String("QUB_")) &&
            (text.contains(QLatin1String("QUB_open")) ||
             QStringList{"QUB_close", "QUB_proxychange", "QUB_iconleft", "QUB_iconright"}.contains(
                 text));
        if (channel.text() != (acts ? QString() : text))
            abort();
    }
    if (parts.bar.band(key::tabsBar)->count() > tabsBefore + lines.size())
        abort();
    // The next input starts from an empty box and at most a few tabs.
    channel.setText({});
    while (parts.bar.band(key::tabsBar)->count() > 4)
        parts.tabs.closeTab(0); // the current one
    return 0;
}
