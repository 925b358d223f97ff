#include "app/CommandLine.h"
#include "app/MainWindow.h"
#include "platform/AppDir.h"
#include "platform/Dialogs.h"
#include "platform/IconTheme.h"
#include "platform/Shell.h"
#include "platform/engine/WebEngineViewFactory.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication::setApplicationName(QStringLiteral("QUB-BROWSER"));
    QApplication::setApplicationVersion(QStringLiteral(QUB_VERSION));
    QApplication app(argc, argv);
    platform::chooseIconTheme();

    platform::QtDialogs dialogs;
    platform::DesktopShell shell;
    platform::SystemClock clock;
    platform::WebEngineViewFactory factory(dialogs);
    int code = 0;
    {
        MainWindow window(platform::appDir(), dialogs, shell, factory, clock);
        dialogs.setParent(&window);
        if (!window.start(commandLineAddress(QApplication::arguments())))
            return 1;
        code = QApplication::exec();
        dialogs.setParent(nullptr);
    }
    // Views retired during the run are deleted before their profile goes.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return code;
}
