// Tab numbering, positions and closing rules, on fake views.
#include "commandbar/CommandBar.h"
#include "commandbar/SkinLoader.h"
#include "commands/BarSwitches.h"
#include "core/Keys.h"
#include "support/Fakes.h"
#include "support/StripFixture.h"
#include "support/TestMain.h"
#include "tabs/Ellipsis.h"
#include "tabs/TabRest.h"
#include "tabs/TabStrip.h"

#include <memory>

using namespace platform;
using namespace commandbar;

namespace {

struct Fixture : StripFixture
{
    Fixture()
    {
        QObject::connect(&tabs, &TabStrip::changed, &tabs, [this](const TabChange& change) {
            changes.push_back({change.kind, change.view->index(), change.position, change.cause,
                               change.opened, change.left ? change.left->index() : 0});
        });
        tabs.createCatchView();
        tabs.openFirstTab();
        changes.clear();
    }
    // A change record as told, with views by their index.
    struct Change
    {
        TabChange::Kind kind;
        int index;
        int position;
        TabChange::Cause cause;
        bool opened;
        int left;
        bool operator==(const Change&) const = default;
    };
    std::vector<Change> changes;
    std::vector<Change> changesOf(TabChange::Kind kind) const
    {
        std::vector<Change> of;
        for (const Change& change : changes)
            if (change.kind == kind)
                of.push_back(change);
        return of;
    }
    Band& strip() { return *bar.band(key::tabsBar); }
    QStringList toolKeys()
    {
        QStringList keys;
        for (int i = 0; i < strip().count(); ++i)
            keys << strip().at(i)->key();
        return keys;
    }
    QString checkedTabs()
    {
        QStringList keys;
        for (int i = 0; i < strip().count(); ++i)
            if (strip().at(i)->checked())
                keys << strip().at(i)->key();
        return keys.join(',');
    }
    QString tag(int index) { return tabs.view(index)->tag(); }
};

} // namespace

class TabsTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void closingTheMiddleTabShiftsPositions()
    {
        Fixture f;
        f.tabs.newTab("http://two/", true);
        f.tabs.newTab("http://three/", true);
        // What a part keeps of a tab goes with the tab, though its view may
        // live on until it is idle.
        const std::weak_ptr<int> kept = f.tabs.tab(2)->data<std::shared_ptr<int>>() =
            std::make_shared<int>(2);
        QPointer<FakeBrowserView> two = f.view(2);
        f.changes.clear();

        f.tabs.closeTab(2);
        QCOMPARE(f.toolKeys(), (QStringList{"tabs-1", "tabs-3"}));
        QCOMPARE(f.tag(3), QStringLiteral("2"));
        QCOMPARE(f.state.tabView, (std::vector<int>{0, 1, 3}));
        QVERIFY(kept.expired());
        QVERIFY(!two.isNull());
        using K = TabChange::Kind;
        QVERIFY((f.changes == std::vector<Fixture::Change>{
                                  {K::Removed, 2, 2, TabChange::Cause::CloseTab, false, 0},
                                  {K::Activated, 1, 1, TabChange::Cause::CloseTab, false, 0}}));
        // The closed view was the previous tab: its tag now names position 1.
        QCOMPARE(f.state.currentTab, 1);
        QCOMPARE(f.state.previousTab, 3);
        QCOMPARE(f.checkedTabs(), QStringLiteral("tabs-1"));
        QCOMPARE(f.stage.shown, 1);
        QVERIFY(f.tabs.view(2) == nullptr);

        QCOMPARE(f.tabs.newTab({}, true), 4);
        QCOMPARE(f.toolKeys(), (QStringList{"tabs-1", "tabs-3", "tabs-4"}));
        QCOMPARE(f.tag(4), QStringLiteral("3"));
        QCOMPARE(f.state.tabView, (std::vector<int>{0, 1, 3, 4}));
    }

    void closingTheActiveTabShowsItsLeftNeighbour()
    {
        Fixture f;
        f.tabs.newTab({}, true);
        f.tabs.newTab({}, true);
        f.tabs.activateTab(1);
        f.changes.clear();
        f.tabs.activateTab(2);
        QCOMPARE(f.state.previousTab, 1);
        // A switch names the tab it left; showing the current tab again does not.
        f.tabs.activateTab(2);
        f.tabs.refreshActiveTab();
        QVERIFY((f.changes ==
                 std::vector<Fixture::Change>{{TabChange::Kind::Activated, 2, 2, {}, false, 1},
                                              {TabChange::Kind::Activated, 2, 2, {}, false, 0}}));
        f.tabs.closeTab(0);
        QCOMPARE(f.state.currentTab, 1);
        QCOMPARE(f.state.previousTab, 3); // the view now at the closed position
        QCOMPARE(f.tag(3), QStringLiteral("2"));
        QCOMPARE(f.checkedTabs(), QStringLiteral("tabs-1"));
        // First tab closed while it was previous: falls back to position 1.
        f.tabs.activateTab(3);
        f.tabs.closeTab(1);
        QCOMPARE(f.toolKeys(), QStringList{"tabs-3"});
        QCOMPARE(f.state.currentTab, 3);
        QCOMPARE(f.tag(3), QStringLiteral("1"));
    }

    void closingTheLastActiveTabLeavesNoPreviousTab()
    {
        Fixture f;
        f.tabs.newTab({}, true);
        f.tabs.newTab({}, true);
        f.tabs.activateTab(1);
        f.tabs.activateTab(3);
        f.tabs.closeTab(0);
        // Nothing stands at the closed position any more.
        QCOMPARE(f.state.currentTab, 1);
        QCOMPARE(f.state.previousTab, 0);
        // With no previous tab, closing the first shows the one now first.
        f.tabs.closeTab(0);
        QCOMPARE(f.state.currentTab, 2);
        QCOMPARE(f.toolKeys(), QStringList{"tabs-2"});
    }

    void tabShownAfterAClose_data()
    {
        QTest::addColumn<int>("closed");
        QTest::addColumn<int>("previous");
        QTest::addColumn<int>("last");
        QTest::addColumn<int>("shown");
        QTest::newRow("previous tab named") << 3 << 1 << 3 << 1;
        QTest::newRow("no previous: left neighbour") << 3 << 0 << 3 << 2;
        QTest::newRow("previous beyond the end") << 2 << 4 << 2 << 2;
        QTest::newRow("previous below the start") << 2 << -1 << 2 << 1;
    }
    void tabShownAfterAClose()
    {
        QFETCH(int, closed);
        QFETCH(int, previous);
        QFETCH(int, last);
        QTEST(positionShownAfterClose(closed, previous, last), "shown");
    }

    void closingTheOnlyTabResetsIt()
    {
        Fixture f;
        f.view(1)->navigate("http://one/");
        f.tabs.closeTab(0);
        QCOMPARE(f.toolKeys(), QStringList{"tabs-2"});
        QCOMPARE(f.state.currentTab, 2);
        QVERIFY(!f.state.shuttingDown);
        QVERIFY(f.tabs.view(1) == nullptr);
        QCOMPARE(f.stage.shown, 2);
        QCOMPARE(f.tabs.view(2)->locationUrl(), QString());
    }

    void retiredViewsAreStoppedAndDeleted()
    {
        Fixture f;
        f.tabs.newTab("http://two/", true);
        QPointer<FakeBrowserView> two = f.view(2);
        f.tabs.closeTab(2);
        QCOMPARE(two->calls, (QStringList{"navigate http://two/", "stop"}));
        QVERIFY(two->silent());
        QVERIFY(two->signalsBlocked());
        QVERIFY(two->widget()->isHidden());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(two.isNull());

        // A view waiting inside a prompt of its page has its page emptied at
        // once and goes when the prompt is answered.
        f.tabs.newTab("http://three/", true);
        QPointer<FakeBrowserView> three = f.view(3);
        {
            const platform::BrowserView::Prompt prompt(*three);
            f.tabs.closeTab(3);
            QCOMPARE(three->calls.last(), "clear");
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!three.isNull());
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(three.isNull());
    }

    void backgroundTabsLeaveTheActiveOneAlone()
    {
        Fixture f;
        f.state.canGoBack[1] = true;
        QCOMPARE(f.tabs.newTab("http://bg/", false), 2);
        QCOMPARE(f.state.currentTab, 1);
        QCOMPARE(f.checkedTabs(), QStringLiteral("tabs-1"));
        QCOMPARE(f.stage.shown, 1);
        QVERIFY((f.changes ==
                 std::vector<Fixture::Change>{{TabChange::Kind::Inserted, 2, 2, {}, false, 0}}));
        QCOMPARE(f.view(2)->calls, QStringList{"navigate http://bg/"});
        QCOMPARE(f.state.canGoBack, (std::vector<bool>{false, true, false}));
        f.tabs.newTab({}, true);
        QVERIFY((f.changesOf(TabChange::Kind::Activated) ==
                 std::vector<Fixture::Change>{{TabChange::Kind::Activated, 3, 3, {}, true, 0}}));
    }

    // A tab out of sight is frozen, then discarded, when its time is up,
    // counted from when it was last in front; low memory discards every tab
    // out of sight at once. The tab in front and a tab that waits to be shown
    // are never asked.
    void tabsOutOfSightRest()
    {
        using State = LifecycleFacet::State;
        Fixture f;
        f.tabs.newTab("http://two/", false);
        f.tabs.newTab("http://three/", false);
        qint64 now = 0;
        bool low = false;
        TabRest rest(
            f.tabs, [&] { return low; }, [&] { return now; });
        rest.start({std::chrono::milliseconds{300}, std::chrono::milliseconds{1000}});
        const auto states = [&](qint64 at) {
            now = at;
            rest.sweep();
            std::vector<State> found;
            for (int index = 1; index <= f.state.tabCount; ++index)
                found.push_back(f.view(index)->lifecycleFacet.current);
            return found;
        };
        using V = std::vector<State>;
        QCOMPARE(states(0), (V{State::Active, State::Active, State::Active}));
        // No look in between: the next is when the first tab is due.
        QCOMPARE(rest.nextLook(), 300);
        QCOMPARE(states(299), (V{State::Active, State::Active, State::Active}));
        // A page that will not rest yet is asked again a tenth later.
        f.view(3)->lifecycleFacet.allows = State::Active;
        QCOMPARE(states(300), (V{State::Active, State::Frozen, State::Active}));
        QCOMPARE(rest.nextLook(), 330);
        f.view(3)->lifecycleFacet.allows = State::Discarded;
        QCOMPARE(states(330), (V{State::Active, State::Frozen, State::Frozen}));
        QCOMPARE(rest.nextLook(), 1000);
        // Tab 3 in front for a moment: the engine wakes a page shown.
        f.tabs.activateTab(3);
        f.view(3)->lifecycleFacet.current = State::Active;
        now = 500;
        f.tabs.activateTab(1);
        QCOMPARE(states(799), (V{State::Active, State::Frozen, State::Active}));
        QCOMPARE(states(1000), (V{State::Active, State::Discarded, State::Frozen}));
        QCOMPARE(states(1500), (V{State::Active, State::Discarded, State::Discarded}));
        // Nothing left to give back: no more looks until the tabs change.
        QCOMPARE(rest.nextLook(), -1);

        f.tabs.newTab("http://four/", false);
        QCOMPARE(rest.nextLook(), 1500);
        f.tabs.openWhenShown("http://five/", "Five");
        low = true;
        QCOMPARE(states(1501), (V{State::Active, State::Discarded, State::Discarded,
                                  State::Discarded, State::Active}));
        // The tab waiting to be shown may load any time: memory is watched.
        QCOMPARE(rest.nextLook(), 11501);
    }

    void closeAllAndCloseOthers()
    {
        Fixture f;
        f.tabs.newTab({}, true);
        f.tabs.newTab({}, true);
        f.state.canGoForward = {false, false, true, false};
        f.tabs.closeOtherTabs(2);
        QCOMPARE(f.toolKeys(), QStringList{"tabs-2"});
        QCOMPARE(f.tag(2), QStringLiteral("1"));
        QCOMPARE(f.state.currentTab, 2);
        QCOMPARE(f.state.previousTab, 2);
        QCOMPARE(f.state.canGoForward, (std::vector<bool>{false, true}));
        QCOMPARE(f.checkedTabs(), QStringLiteral("tabs-2"));
        QCOMPARE(f.stage.shown, 2);

        f.tabs.newTab({}, true);
        f.changes.clear();
        f.tabs.closeAllTabs();
        QCOMPARE(f.toolKeys(), QStringList{"tabs-5"});
        // Neither bulk close lists its tabs as closed one by one.
        QCOMPARE(f.changesOf(TabChange::Kind::Removed).size(), size_t(2));
        for (const Fixture::Change& removed : f.changesOf(TabChange::Kind::Removed))
            QCOMPARE(removed.cause, TabChange::Cause::Bulk);
        QCOMPARE(f.state.currentTab, 5);
        QCOMPARE(f.state.tabView, (std::vector<int>{0, 5}));
        QCOMPARE(f.state.tabCount, 5);
        QVERIFY(!f.state.shuttingDown);
    }

    void pagesClosingThemselves()
    {
        Fixture f;
        f.tabs.newTab("http://two/", false);
        f.tabs.newTab("http://three/", false);
        f.tabs.pageClosing(2, true); // a frame: ignored
        QCOMPARE(f.strip().count(), 3);
        f.changes.clear();
        f.tabs.pageClosing(2, false);
        QVERIFY((f.changes ==
                 std::vector<Fixture::Change>{{TabChange::Kind::Removed, 2, 2,
                                               TabChange::Cause::PageInBackground, false, 0}}));
        QCOMPARE(f.toolKeys(), (QStringList{"tabs-1", "tabs-3"}));
        QCOMPARE(f.tag(3), QStringLiteral("2"));
        QCOMPARE(f.state.currentTab, 1);
        f.state.shuttingDown = true;
        f.tabs.pageClosing(3, false);
        QCOMPARE(f.strip().count(), 2);
        f.state.shuttingDown = false;
        f.tabs.pageClosing(1, false); // the active tab closes as by the close command
        QCOMPARE(f.toolKeys(), QStringList{"tabs-3"});
        QCOMPARE(f.state.currentTab, 3);
    }

    void pointingAtTabEntries()
    {
        Fixture f;
        f.tabs.newTab({}, false);
        f.view(2)->navigate("http://example.test/a%20b/" + QString(60, 'x'));
        Tool* one = f.strip().tool("tabs-1");
        f.menu.reportTool(one);
        QCOMPARE(one->tooltip(), QStringLiteral("Blank Page"));
        QVERIFY(f.state.tabMenuArmed);
        QCOMPARE(f.state.targetTab, 1);
        Tool* two = f.strip().tool("tabs-2");
        f.menu.reportTool(two);
        QVERIFY(two->tooltip().startsWith("http://example.test/a b/"));
        QVERIFY(two->tooltip().endsWith(" ..."));
        QVERIFY(two->tooltip().size() < 50);
        QCOMPARE(f.state.targetTab, 2);
        f.menu.reportTool(f.bar.tool(key::mainBar, "b_back"));
        QVERIFY(!f.state.tabMenuArmed);
        QCOMPARE(f.state.targetTab, 2);
        f.state.tabMenuPending = true;
        f.menu.reportTool(f.bar.tool(key::mainBar, "b_back"));
        QCOMPARE(f.state.targetTab, 0);
    }

    void ellipsisRows_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("expected");
        QTest::newRow("exactly") << "Fourteen chars" << 14 << "Fourteen chars";
        QTest::newRow("wide counts twice")
            << QString::fromUtf8("中文中文中文中文") << 14 << QString::fromUtf8("中文中文 ...");
        QTest::newRow("empty") << "" << 50 << "";
    }
    void ellipsisRows()
    {
        QFETCH(QString, text);
        QFETCH(int, width);
        QTEST(ellipsis(text, width), "expected");
    }

    void dispatcherDrivesTheStrip()
    {
        Fixture f;
        CommandDispatcher& commands = f.commands;
        commands.dispatch(f.bar.tool(key::fileMenu, key::newTab));
        commands.dispatch(f.bar.tool(key::fileMenu, key::newTab));
        QCOMPARE(f.state.currentTab, 3);
        commands.dispatch(f.strip().tool("tabs-1"));
        QCOMPARE(f.state.currentTab, 1);
        // A secondary action closes that tab, not the active one.
        f.bar.reportSecondary(f.strip().tool("tabs-3"));
        QCOMPARE(f.toolKeys(), (QStringList{"tabs-1", "tabs-2"}));
        // The closed tab was the previous one, so its left neighbour shows.
        QCOMPARE(f.state.currentTab, 2);
        // The tab menu acts on the tab pointed at; the File menu on the shown one.
        f.menu.reportTool(f.strip().tool("tabs-1"));
        commands.dispatch(f.bar.tool(key::fileMenu, key::closeTab));
        QCOMPARE(f.toolKeys(), QStringList{"tabs-1"});
        f.tabs.newTab({}, true);
        f.menu.reportTool(f.strip().tool("tabs-1"));
        commands.dispatch(f.bar.tool(key::tabMenu, key::closeTab));
        QCOMPARE(f.toolKeys(), QStringList{"tabs-4"});
    }

    void tabMenuTakesOverTheCustomiseMenuOverTabs()
    {
        Fixture f;
        BarSwitches switches(f.bar, f.commands, f.events);
        QSignalSpy popUps(&f.bar, &CommandBar::popUpRequested);
        QVERIFY(f.bar.reportCustomize()); // not over a tab: the bar's own menu
        f.menu.reportTool(f.strip().tool("tabs-1"));
        QVERIFY(!f.bar.reportCustomize());
        QCOMPARE(popUps.count(), 1);
        QCOMPARE(popUps[0][0].value<Band*>()->key(), QStringLiteral("tab_Menu"));
        f.bar.reportShown(f.bar.band(key::tabMenu));
        QVERIFY(f.state.tabMenuPending);
        f.menu.reportTool(f.bar.tool(key::mainBar, "b_back"));
        QCOMPARE(f.state.targetTab, 0);
        QVERIFY(f.bar.reportCustomize());

        // The View menu shows the bands as they are, however they were hidden.
        f.bar.band(key::addressBar)->setVisible(false);
        f.bar.reportDropDown(f.bar.band(key::viewMenu));
        QVERIFY(!f.bar.tool(key::viewMenu, key::showAddressBar)->checked());
        QVERIFY(f.bar.tool(key::viewMenu, key::showStatusBar)->checked());
    }
};

QUB_TEST_MAIN(TabsTest)
#include "tst_tabs.moc"
