#pragma once
// The real main window composed on fake views, in a program folder of its
// own that holds the named files of the shipped skin folder ("lng.ini" is
// the English language file).
#include "app/MainWindow.h"
#include "support/Fakes.h"

#include <QFile>
#include <QTemporaryDir>
#include <memory>

struct FakeApp
{
    QTemporaryDir dir;
    QString appDir = dir.path() + '/';
    ScriptedDialogs dialogs;
    RecordingShell shell;
    SettableClock clock;
    FakeViewFactory factory;
    std::unique_ptr<MainWindow> window;

    explicit FakeApp(const QStringList& files)
    {
        for (const QString& name : files)
            QFile::copy(QStringLiteral(QUB_SKIN_DIR "/") + (name == QLatin1String("lng.ini")
                                                                ? QStringLiteral("English.lng")
                                                                : name),
                        appDir + name);
        window = std::make_unique<MainWindow>(platform::ProgramFolder(appDir), dialogs, shell,
                                              factory, clock);
    }
    // A second run of the program in the same folder, as after a restart.
    void restart()
    {
        window.reset();
        window = std::make_unique<MainWindow>(platform::ProgramFolder(appDir), dialogs, shell,
                                              factory, clock);
    }
};
