#include "app/CommandLine.h"
#include "program/Program.h"

#include <QApplication>

int main(int argc, char** argv)
{
    Program::prepare();
    QApplication app(argc, argv);
    Program program;
    if (!program.start(commandLineAddress(QApplication::arguments())))
        return 1;
    return program.run();
}
