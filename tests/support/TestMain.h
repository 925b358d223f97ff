#pragma once
// Shared test set-up: any Qt warning that a test did not expect fails it.
// Call failOnUnexpectedWarnings() from each test class's init().
#include <QApplication>
#include <QRegularExpression>
#include <QtTest>
#include <vector>

namespace testsupport {

inline void failOnUnexpectedWarnings()
{
    // The engine's start-up notes, and the offscreen platform's note that it
    // has no window manager to tell sizes to or raise windows for, say nothing
    // about the program.
    QTest::failOnWarning(
        QRegularExpression(QStringLiteral("^(?!.*(Sandboxing disabled by user|XDG_RUNTIME_DIR|"
                                          "does not support (propagateSizeHints|raise\\(\\)))).*"),
                           QRegularExpression::DotMatchesEverythingOption));
}

} // namespace testsupport

#define QUB_TEST_MAIN(TestClass)                                                                   \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);                                \
        QApplication app(argc, argv);                                                              \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }

// As QUB_TEST_MAIN, with every ".test" name this computer: the engine and the
// program's proxy both read the rule from the arguments.
#define QUB_TEST_MAIN_WITH_TEST_NAMES(TestClass)                                                   \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);                                \
        std::vector<char*> args(argv, argv + argc);                                                \
        char rules[] = "--host-resolver-rules=MAP *.test 127.0.0.1";                               \
        args.push_back(rules);                                                                     \
        int count = int(args.size());                                                              \
        QApplication app(count, args.data());                                                      \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
