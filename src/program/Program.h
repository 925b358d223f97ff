#pragma once
// The program as it ships: the application's names and attributes, the
// icon theme, the real dialogs, shell, clock and engine, the main window, the
// run, and an orderly end. main() and the benchmarks that run the program
// all start here, so what they measure is what users run.
#include "app/MainWindow.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "platform/engine/WebEngineViewFactory.h"

#include <memory>

class Program
{
public:
    // Before the application object is made.
    static void prepare();

    // With the application object made: everything up to the window, which
    // is built but not started, so a caller can watch it first.
    Program();
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    MainWindow& window() { return *window_; }
    // False when the window could not start (it has said why).
    bool start(const QString& address);
    // The event loop, until the program quits; its exit code.
    int run();

private:
    platform::QtDialogs dialogs_;
    platform::DesktopShell shell_;
    platform::SystemClock clock_;
    platform::WebEngineViewFactory factory_;
    std::unique_ptr<MainWindow> window_;
};
