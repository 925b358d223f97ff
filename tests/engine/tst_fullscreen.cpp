// Full screen under a real window manager (openbox, started on the test's own
// X display): F11 twice brings the window back as it was, every time, with
// every band on its line, whatever the manager does with each request.
#include "app/MainWindow.h"
#include "commandbar/widgets/CommandBarWidgets.h"
#include "core/Keys.h"
#include "support/EngineApp.h"
#include "support/TestMain.h"

#include <QProcess>
#include <QToolBar>
#include <QWindow>

using namespace platform;
using namespace commandbar;

class FullScreenTest : public QObject
{
    Q_OBJECT
    QProcess manager;

    // The manager handles requests in order: once a window shown after ours
    // is on screen, it has done what it will with ours.
    static void settle()
    {
        QWidget probe;
        probe.resize(50, 50);
        probe.show();
        QVERIFY(QTest::qWaitForWindowExposed(&probe));
    }

private slots:
    void initTestCase()
    {
        manager.start(QStringLiteral("openbox"), {});
        QVERIFY2(manager.waitForStarted(), "openbox is needed: bash scripts/install-deps.sh test");
        // Running once it has said so on the root window.
        auto running = [] {
            QProcess ask;
            ask.start(QStringLiteral("xprop"), {"-root", "_NET_SUPPORTING_WM_CHECK"});
            return ask.waitForFinished() && ask.readAll().contains("window id");
        };
        QTRY_VERIFY_WITH_TIMEOUT(running(), 20000);
    }
    void cleanupTestCase()
    {
        manager.terminate();
        manager.waitForFinished();
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void f11TwiceBringsTheWindowBackAsItWas()
    {
        for (int round = 0; round < 3; ++round) {
            EngineApp app;
            QVERIFY(app.window->start(QStringLiteral("about:blank")));
            MainWindow& w = *app.window;
            MainWindow::Parts parts = w.parts();
            QVERIFY(QTest::qWaitForWindowExposed(&w));
            QTRY_VERIFY_WITH_TIMEOUT(w.isMaximized(), 20000);
            settle();
            const QRect maximised = w.geometry();
            // The user moved the address band to the bottom of the window.
            const Band* address = parts.bar.band(key::addressBar);
            w.addToolBar(Qt::BottomToolBarArea,
                         w.findChild<QToolBar*>(QLatin1String(key::addressBar)));
            auto f11 = [&] {
                parts.bar.reportClick(parts.bar.tool(key::viewMenu, key::fullScreen));
            };

            f11();
            QTRY_VERIFY_WITH_TIMEOUT(w.windowHandle()->windowState() == Qt::WindowFullScreen,
                                     20000);
            settle();
            f11();
            settle();
            QTRY_VERIFY_WITH_TIMEOUT(w.windowHandle()->isExposed(), 20000);
            QCOMPARE(w.windowHandle()->windowState(), Qt::WindowMaximized);
            QTRY_COMPARE_WITH_TIMEOUT(w.geometry(), maximised, 20000);
            QVERIFY(address->visible() && !parts.bar.band(key::mainBar)->floating());
            QCOMPARE(parts.bar.dockLine(*address), address->declaredLine());
            QCOMPARE(w.toolBarArea(w.findChild<QToolBar*>(QLatin1String(key::addressBar))),
                     Qt::TopToolBarArea);

            // A window of its own size comes back to its place and size.
            w.showNormal();
            w.setGeometry(80, 60, 900, 600);
            settle();
            const QRect normal = w.geometry();
            f11();
            settle();
            f11();
            settle();
            QTRY_VERIFY_WITH_TIMEOUT(w.windowHandle()->isExposed(), 20000);
            QCOMPARE(w.windowHandle()->windowState(), Qt::WindowNoState);
            QTRY_COMPARE_WITH_TIMEOUT(w.geometry(), normal, 20000);
        }
    }
};

QUB_TEST_MAIN(FullScreenTest)
#include "tst_fullscreen.moc"
