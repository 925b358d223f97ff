// The real main window on the real engine: start-up from the shipped skin,
// tabs of real views, real clicks on the tab band, and the exit.
#include "app/AddressToolWidth.h"
#include "app/MainWindow.h"
#include "commandbar/widgets/CommandBarWidgets.h"
#include "core/Keys.h"
#include "favorites/AddFavouriteDialog.h"
#include "favorites/FavouritesPanel.h"
#include "platform/engine/WebEngineBrowserView.h"
#include "platform/ini/ProfileFile.h"
#include "support/EngineApp.h"
#include "support/Fakes.h"
#include "support/Files.h"
#include "support/LocalHttpServer.h"
#include "support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>

using namespace platform;
using namespace commandbar;

class WindowTest : public QObject
{
    Q_OBJECT
    LocalHttpServer server;

private slots:
    void initTestCase()
    {
        server.setPage("/one.html", titled("Page One"));
        server.setPage("/two.html", titled("Page Two"));
        server.setPage("/alert.html", "<html><body><script>alert('hello');"
                                      "document.title = 'after alert';</script></body></html>");
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    // The shown tab's page stands in the client area; the others and the
    // catch view are out of sight.
    void viewsStandWhereTheStageSaysOnStart()
    {
        EngineApp app;
        QVERIFY(app.window->start(server.url("/one.html")));
        MainWindow& w = *app.window;
        QVERIFY(w.isVisible());
        QVERIFY(w.parts().tabs.view(0)->widget()->isHidden());
        w.parts().tabs.newTab(server.url("/two.html"), true);
        QCOMPARE(w.parts().tabs.currentView()->widget()->parentWidget()->objectName(),
                 QStringLiteral("pic_WB"));
        QCOMPARE(w.parts().tabs.view(1)->widget()->parentWidget()->objectName(),
                 QStringLiteral("HideFrame"));
    }

    void realViewsFollowTheirSettings()
    {
        EngineApp app;
        QVERIFY(app.window->start({}));
        MainWindow& w = *app.window;
        QCOMPARE(w.parts().tabs.view(1)->readyState(), BrowserView::Uninitialized);
        QCOMPARE(w.parts().tabs.view(1)->locationUrl(), QString());
        // A silent view shows no script dialog: the page runs straight on.
        w.parts().bar.tool(key::toolsMenu, key::silent)->setChecked(true);
        const int silent = w.parts().tabs.newTab(server.url("/alert.html"), false);
        QTRY_COMPARE_WITH_TIMEOUT(w.parts().tabs.view(silent)->title(),
                                  QStringLiteral("after alert"), 20000);
        QTRY_COMPARE(w.parts().tabs.view(silent)->readyState(), BrowserView::Complete);
        QCOMPARE(w.parts().state.currentTab, 1);
    }

    void tabButtonsAnswerRealClicks()
    {
        EngineApp app;
        QVERIFY(app.window->start({}));
        MainWindow& w = app.withThreeBlankTabs();
        QToolButton* first = app.tabButton(1);
        QVERIFY(first && first->isVisible());
        app.clock.now = 43210.5;
        QTest::mouseClick(first, Qt::LeftButton, {}, QPoint(4, 6));
        QCOMPARE(w.parts().state.currentTab, 1);
        // The click hook saw the press.
        QCOMPARE(w.parts().clickHook.lastPressTime(), 43210.5);
        QCOMPARE(w.parts().clickHook.lastPressPoint(), first->mapToGlobal(QPoint(4, 6)));
        QVERIFY(first->isChecked());
        QVERIFY(!app.tabButton(3)->isChecked());
        QTest::mouseClick(app.tabButton(3), Qt::MiddleButton);
        QCOMPARE(app.tabKeys(), (QStringList{"tabs-1", "tabs-2"}));
        QTest::mouseDClick(app.tabButton(2), Qt::LeftButton);
        QCOMPARE(app.tabKeys(), QStringList{"tabs-1"});
    }

    void favouritesOpenFromThePanelAndAreAdded()
    {
        const TemporaryFavourites favourites;
        const QString& root = favourites.root;
        QVERIFY(favourites.add("Local/One.url", server.url("/one.html")));
        QVERIFY(favourites.add("Two.url", server.url("/two.html")));
        EngineApp app;
        QVERIFY(app.window->start({}));
        MainWindow::Parts parts = app.window->parts();
        // The favourites come once the window has drawn itself.
        QTRY_VERIFY(parts.bar.tool(key::favouritesPage, key::favouritesTree)->control());
        const int fixed = parts.bar.band(key::favMenu)->count() - 2;

        // The panel opens with the toolbar's button; a click on a node opens a tab.
        QToolButton* show = qobject_cast<QToolButton*>(
            static_cast<QToolBar*>(parts.barWidgets->container(parts.bar.band(key::mainBar)))
                ->widgetForAction(parts.barWidgets->action(
                    parts.bar.tool(key::mainBar, cmd::keyOf(cmd::Command::FavouritesPanel)))));
        QTest::mouseClick(show, Qt::LeftButton);
        QTreeView* tree = parts.favourites.panel().tree();
        QTRY_VERIFY(tree->isVisible());
        const QModelIndex two = tree->model()->index(1, 0);
        QCOMPARE(two.data().toString(), "Two");
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(two).center());
        QTRY_VERIFY_WITH_TIMEOUT(app.engineView(2) && loaded(app.engineView(2), "Page Two"), 20000);

        // Add Favorite keeps the page under the name given, last in its folder.
        QTimer::singleShot(0, [] {
            auto* dialog = qobject_cast<AddFavouriteDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            QCOMPARE(dialog->nameEdit()->text(), "Page Two");
            dialog->nameEdit()->setText("Kept");
            dialog->accept();
        });
        parts.barWidgets
            ->action(parts.bar.tool(key::favMenu, cmd::keyOf(cmd::Command::AddFavourite)))
            ->trigger();
        QCOMPARE(ReadIniString(root + "Kept.url", "InternetShortcut", "URL"),
                 server.url("/two.html"));
        QCOMPARE(parts.bar.band(key::favMenu)->at(fixed + 2)->caption(), "Kept");
    }

    void theActiveTabStaysInViewAmongMany()
    {
        EngineApp app;
        QVERIFY(app.window->start({}));
        MainWindow& w = *app.window;
        w.setGeometry(0, 0, 800, 500);
        for (int n = 2; n <= 20; ++n) {
            w.parts().tabs.newTab({}, true);
            QTRY_VERIFY(app.tabButton(n)->isVisible());
        }
        QVERIFY(!app.tabButton(1)->isVisible());
        w.parts().tabs.activateTab(1);
        QTRY_VERIFY(app.tabButton(1)->isVisible());
        w.parts().tabs.activateTab(20);
        QTRY_VERIFY(app.tabButton(20)->isVisible());
        w.setGeometry(0, 0, 500, 500);
        QTRY_VERIFY(app.tabButton(20)->isVisible());

        // The button at the strip's start lists every tab; an entry shows its tab.
        auto* strip = static_cast<QToolBar*>(
            w.parts().barWidgets->container(w.parts().bar.band(key::tabsBar)));
        QToolButton* all = nullptr;
        for (QToolButton* button : strip->findChildren<QToolButton*>())
            if (button->arrowType() == Qt::LeftArrow)
                all = button;
        QVERIFY(all && all->isVisible() && all->menu());
        emit all->menu()->aboutToShow();
        QCOMPARE(all->menu()->actions().size(), 20);
        all->menu()->actions().at(2)->trigger();
        QCOMPARE(w.parts().state.currentTab, 3);
        QTRY_VERIFY(app.tabButton(3)->isVisible());
    }

    void menusOpenFromTheKeyboard()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        WebEngineBrowserView* view = app.startAt(server.url("/one.html"), "Page One");
        QVERIFY(view);
        QMenu* file = w.parts().barWidgets->menu(key::fileMenu);
        w.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        view->focusPage();
        QTRY_VERIFY(QApplication::focusWidget());
        // Alt and a menu's underlined letter opens it.
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::AltModifier);
        QTRY_VERIFY(file->isVisible());
        QTest::keyClick(file, Qt::Key_Escape);
        QTRY_VERIFY(!file->isVisible());
        // F10 opens the first menu, even from the page, and the keyboard goes
        // on from menu to menu.
        view->focusPage();
        QTRY_VERIFY(QApplication::focusWidget() != w.menuBar());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F10);
        QTRY_VERIFY(file->isVisible());
        QTest::keyClick(file, Qt::Key_Right);
        QTRY_VERIFY(w.parts().barWidgets->menu("sub_Edit")->isVisible());
        QTest::keyClick(w.parts().barWidgets->menu("sub_Edit"), Qt::Key_Escape);
    }

    void tabMenuAndShortcutsOnTheRealBar()
    {
        EngineApp app;
        QVERIFY(app.window->start({}));
        MainWindow& w = app.withThreeBlankTabs();
        // Right-click tab 1 while tab 3 shows, then choose Close Tab in its menu
        // (from the keyboard: Qt 6.8's menus take no synthetic mouse moves).
        QToolButton* first = app.tabButton(1);
        QTest::mouseMove(first);
        QTRY_COMPARE(w.parts().state.targetTab, 1);
        QContextMenuEvent rightClick(QContextMenuEvent::Mouse, QPoint(5, 5),
                                     first->mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(first, &rightClick);
        QMenu* menu = w.parts().barWidgets->menu(key::tabMenu);
        QTRY_VERIFY(menu->isVisible());
        QAction* close =
            w.parts().barWidgets->action(w.parts().bar.tool(key::tabMenu, key::closeTab));
        menu->setActiveAction(close);
        QTest::keyClick(menu, Qt::Key_Return);
        QTRY_COMPARE(app.tabKeys(), (QStringList{"tabs-2", "tabs-3"}));

        // Leaving the tabs disarms the tab menu.
        QTest::mouseMove(w.parts().addressBox);
        QTRY_VERIFY(!w.parts().state.tabMenuArmed);

        // Shortcuts work with their band hidden; a control's shortcut focuses it.
        w.parts().bar.band(key::mainBar)->setVisible(false);
        w.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        QSignalSpy clicks(&w.parts().bar, &CommandBar::toolClicked);
        QTest::keyClick(&w, Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(clicks.count(), 0); // Back is disabled on a blank tab
        w.parts().bar.tool(key::mainBar, "b_back")->setEnabled(true);
        QTest::keyClick(&w, Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(clicks.count(), 1);
        QCOMPARE(clicks[0][0].value<Tool*>()->key(), QStringLiteral("b_back"));
        w.parts().addressBox->setFocus();
        w.parts().addressBox->setEditText("typed over");
        QTest::keyClick(&w, Qt::Key_L, Qt::ControlModifier);
        QTRY_VERIFY(w.parts().addressBox->hasFocus());
        QCOMPARE(w.parts().addressBox->lineEdit()->selectedText(), QStringLiteral("typed over"));

        // With the main toolbar gone the address box has its own line to fill.
        Tool* address = w.parts().bar.tool(key::addressBar, key::addressTool);
        const int ownLine =
            addressToolWidth(false, w.parts().barWidgets->lines().pixelsToTwips(w.width()),
                             w.parts().bar.leftTwips(*w.parts().bar.band(key::addressBar)));
        w.parts().bar.recalcLayout();
        QTRY_COMPARE(address->width(), ownLine);
    }

    // Closing the window asks first; Cancel keeps the window, its tabs and
    // the settings file as they were.
    void aCancelledCloseChangesNothing()
    {
        EngineApp app;
        const QByteArray before = "; kept comment\r\n[QUB-BROWSER]\r\nTOOLSBAR=1\r\nMYKEY=mine\r\n";
        writeFile(app.appDir + "Browser.ini", before);
        QVERIFY(app.window->start(server.url("/one.html")));
        MainWindow& w = *app.window;
        w.parts().bar.tool(key::toolsMenu, key::stopPopups)->setChecked(true);
        app.dialogs.answers = {Dialogs::Answer::Cancel};
        QVERIFY(!w.close());
        QVERIFY(w.isVisible());
        QCOMPARE(app.tabKeys(), QStringList{"tabs-1"});
        QCOMPARE(readFile(app.appDir + "Browser.ini"), before);
    }

    void badSkinsEndTheProgramAndWriteNothing_data()
    {
        QTest::addColumn<QByteArray>("skin");
        QTest::addColumn<QString>("message");
        QTest::newRow("missing") << QByteArray() << "Cannot find skin file:default.tb2";
        QTest::newRow("tools in the tab band")
            << QByteArray("band tb_Tabs toolbar\n  button b_newt\nend\n")
            << "default.tb2, line 1: band \"tb_Tabs\" must declare no tools";
    }
    void badSkinsEndTheProgramAndWriteNothing()
    {
        QFETCH(QByteArray, skin);
        EngineApp app(false);
        if (!skin.isEmpty())
            writeFile(app.appDir + "default.tb2", skin);
        QVERIFY(!app.window->start({}));
        QCOMPARE(app.dialogs.asked.size(), 1);
        QFETCH(QString, message);
        QVERIFY2(app.dialogs.asked[0].startsWith(message), qPrintable(app.dialogs.asked[0]));
        QVERIFY(!app.window->isVisible());
        QVERIFY(!QFile::exists(app.appDir + "Browser.ini"));
    }

    void malformedSettingsReadAsDefaults()
    {
        EngineApp app;
        writeFile(app.appDir + "Browser.ini",
                  QByteArray("\xff\xfe[QUB-BROWSER\n=\n=ADDRESSBAR\0\n[[]]", 30));
        QVERIFY(app.window->start({}));
        QVERIFY(app.window->parts().bar.band(key::addressBar)->visible());
        QVERIFY(app.window->parts().bar.tool(key::viewMenu, key::showAddressBar)->checked());
    }
};

QUB_TEST_MAIN(WindowTest)
#include "tst_window.moc"
