#include "app/CommandLine.h"
#include "platform/instance/OneProgram.h"
#include "program/Program.h"

#include <QApplication>
#include <cstdio>

int main(int argc, char** argv)
{
    Program::prepare();
    // Answered before the application is made: no display is needed for it.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (const auto answer = commandLineAnswer(arguments, QApplication::applicationVersion())) {
        std::fputs(qPrintable(*answer), stdout);
        return 0;
    }
    QApplication app(argc, argv);
    const QString address = commandLineAddress(QApplication::arguments());
    // Before the window is made, so a later start writes nothing.
    platform::OneProgram one;
    switch (one.begin(address)) {
    case platform::OneProgram::Start::HandedOver:
        return 0;
    case platform::OneProgram::Start::Refused:
        std::fprintf(stderr, "qub-browser is already running, but %s.\n",
                     qPrintable(one.problem()));
        return 1;
    case platform::OneProgram::Start::Alone:
        std::fprintf(stderr, "qub-browser: later starts will run apart: %s.\n",
                     qPrintable(one.problem()));
        break;
    case platform::OneProgram::Start::First:
        break;
    }
    Program program;
    if (!program.start(address))
        return 1;
    QObject::connect(&one, &platform::OneProgram::addressHandedOver, &program.window(),
                     &MainWindow::openHandedOver);
    return program.run();
}
