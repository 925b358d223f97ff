#pragma once
// The real main window on the real engine in a program folder of its own,
// with scripted dialogs and a settable clock: the fixture of engine tests.
#include "app/MainWindow.h"
#include "commandbar/widgets/CommandBarWidgets.h"
#include "core/Keys.h"
#include "platform/engine/DownloadManager.h"
#include "platform/engine/WebEngineBrowserView.h"
#include "platform/engine/WebEngineViewFactory.h"
#include "support/Fakes.h"
#include "support/PageProbes.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolButton>
#include <QWebEngineView>
#include <memory>

struct EngineApp
{
    QTemporaryDir dir;
    QString appDir = dir.path() + '/';
    ScriptedDialogs dialogs;
    RecordingShell shell;
    SettableClock clock;
    platform::WebEngineViewFactory factory{dialogs, shell};
    std::unique_ptr<MainWindow> window;

    // With the skin, both languages, and English in force.
    explicit EngineApp(bool withSkin = true)
    {
        if (withSkin) {
            for (const char* name : {"default.tb2", "English.lng", "Deutsch.lng"})
                QFile::copy(QStringLiteral(QUB_SKIN_DIR "/") + name, appDir + name);
            QFile::copy(QStringLiteral(QUB_SKIN_DIR "/English.lng"), appDir + "lng.ini");
        }
        window = std::make_unique<MainWindow>(platform::ProgramFolder(appDir), dialogs, shell,
                                              factory, clock);
    }
    // A second run of the program in the same folder, as after a restart.
    void restart()
    {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        window = std::make_unique<MainWindow>(platform::ProgramFolder(appDir), dialogs, shell,
                                              factory, clock);
    }
    platform::WebEngineBrowserView* engineView(int index) const
    {
        return static_cast<platform::WebEngineBrowserView*>(window->parts().tabs.view(index));
    }
    // Starts the window on address; its first tab once it has loaded title,
    // nullptr when it does not.
    platform::WebEngineBrowserView* startAt(const QString& address, const QString& title)
    {
        if (!window->start(address))
            return nullptr;
        platform::WebEngineBrowserView* view = engineView(1);
        return QTest::qWaitFor([&] { return loaded(view, title); }, 20000) ? view : nullptr;
    }
    ~EngineApp()
    {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    MainWindow& withThreeBlankTabs()
    {
        window->parts().tabs.newTab({}, true);
        window->parts().tabs.newTab({}, true);
        return *window;
    }
    QStringList tabKeys() const
    {
        QStringList keys;
        const commandbar::Band* band = window->parts().bar.band(key::tabsBar);
        for (int i = 0; i < band->count(); ++i)
            keys << band->at(i)->key();
        return keys;
    }
    QToolButton* tabButton(int index) const
    {
        commandbar::Tool* tool =
            window->parts().bar.tool(key::tabsBar, QStringLiteral("tabs-%1").arg(index));
        auto* bar = static_cast<QToolBar*>(
            window->parts().barWidgets->container(window->parts().bar.band(key::tabsBar)));
        return qobject_cast<QToolButton*>(
            bar->widgetForAction(window->parts().barWidgets->action(tool)));
    }
};

// Clicks at a point of the page as the user would, once it has been drawn.
inline void clickPage(platform::WebEngineBrowserView* view, QPoint point)
{
    QWidget* surface = view->engineView()->focusProxy();
    QVERIFY(surface);
    QTRY_VERIFY(surface->isVisible());
    // A page shown again after its tab was parked takes a moment to be drawn
    // and hit-tested, and a page just loaded to connect the page agent that
    // reports its clicks, which tells of neither; clicks before that are lost.
    QVERIFY(drawn(view));
    QTest::qWait(1000);
    // A finger holds the button down a moment; the page hears the press first.
    QTest::mousePress(surface, Qt::LeftButton, {}, point);
    QTest::qWait(80);
    QTest::mouseRelease(surface, Qt::LeftButton, {}, point);
}
