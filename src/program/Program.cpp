#include "Program.h"
#include "platform/IconTheme.h"
#include "platform/ProgramFolder.h"

#include <QApplication>
#include <cstdio>

void Program::prepare()
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication::setApplicationName(QStringLiteral("QUB-BROWSER"));
    QApplication::setApplicationVersion(QStringLiteral(QUB_VERSION));
    // The desktop knows the window by its entry: its icon, its name.
    QGuiApplication::setDesktopFileName(QStringLiteral("org.qub_browser.Browser"));
    // Possible only as root, where the engine will not start otherwise; the
    // user should know that pages then run unconfined.
    if (!qEnvironmentVariableIsEmpty("QTWEBENGINE_DISABLE_SANDBOX") ||
        qEnvironmentVariable("QTWEBENGINE_CHROMIUM_FLAGS").contains(QLatin1String("--no-sandbox")))
        std::fprintf(stderr, "qub-browser: the engine's sandbox is off, so pages run unconfined. "
                             "Run the browser as an ordinary user to keep it on.\n");
}

Program::Program() : factory_(dialogs_, shell_)
{
    platform::chooseIconTheme();
    const platform::ProgramFolder folder = platform::ProgramFolder::ofThisProgram();
    if (!folder.makeOwn())
        std::fprintf(stderr, "qub-browser: cannot make %s; settings and pages will not be kept.\n",
                     qPrintable(folder.own()));
    window_ = std::make_unique<MainWindow>(folder, dialogs_, shell_, factory_, clock_);
    dialogs_.setParent(window_.get());
}

Program::~Program()
{
    dialogs_.setParent(nullptr);
    window_.reset();
    // Views retired during the run are deleted before their profile goes.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool Program::start(const QString& address)
{
    return window_->start(address);
}

int Program::run()
{
    return QApplication::exec();
}
