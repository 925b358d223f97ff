// The popup verdict, one row per rule: which windows a page may open; and the
// list of the windows it stopped.
#include "app/Language.h"
#include "core/Switches.h"
#include "platform/ClickHook.h"
#include "protect/BlockedList.h"
#include "protect/ContentFilters.h"
#include "protect/KillList.h"
#include "protect/PopupBlocker.h"
#include "protect/PopupVerdict.h"
#include "protect/SecurityCaption.h"
#include "protect/SecurityIndicator.h"
#include "support/StripFixture.h"
#include "support/TestMain.h"
#include "tabs/Ellipsis.h"

#include <QFile>
#include <QKeyEvent>
#include <QTemporaryDir>

Q_DECLARE_METATYPE(PopupFacts)

namespace {

// Blocking on, a request from the current tab with an address, a link
// focused, no button down and the last click long ago.
PopupFacts base()
{
    PopupFacts f;
    f.stopPopups = true;
    f.fromCurrentTab = true;
    f.hasAddress = true;
    f.activeTag = "A";
    f.activeValue = "http://a.test/";
    f.now = 36000;
    f.lastClickTime = 35990;
    f.userActivated = true;
    return f;
}

PopupFacts pressedOn(const QString& value, PopupFacts f = base())
{
    f.buttonWentDown = true;
    f.elementAtPoint = true;
    f.pointValue = value;
    return f;
}

PopupFacts clicked(double ago, PopupFacts f = base())
{
    f.lastClickTime = 36000;
    f.now = 36000 + ago;
    return f;
}

PopupFacts focused(const QString& tag, const QString& value, PopupFacts f)
{
    f.activeTag = tag;
    f.activeValue = value;
    return f;
}

} // namespace

class PopupsTest : public QObject
{
    Q_OBJECT
private slots:
    void verdict_data()
    {
        QTest::addColumn<PopupFacts>("facts");
        QTest::addColumn<bool>("allowed");

        PopupFacts off = base();
        off.stopPopups = false;
        off.activeTag.clear();
        QTest::newRow("blocking off opens everything") << off << true;
        QTest::newRow("nothing clicked") << base() << false;

        PopupFacts other = clicked(0.1);
        other.fromCurrentTab = false;
        QTest::newRow("a background tab is never tested") << other << false;
        PopupFacts blank = clicked(0.1);
        blank.hasAddress = false;
        QTest::newRow("a tab without an address is never tested") << blank << false;
        QTest::newRow("no focused element") << focused({}, {}, pressedOn("http://b/")) << false;

        QTest::newRow("press on the focused link") << pressedOn("http://a.test/") << true;
        QTest::newRow("press on the bare body") << focused("BODY", {}, pressedOn({})) << false;
        QTest::newRow("press on another link") << pressedOn("http://b.test/") << true;
        PopupFacts staged = clicked(0.1, pressedOn("http://b.test/"));
        staged.userActivated = false;
        QTest::newRow("every rule met, but the engine saw no user act") << staged << false;
        QTest::newRow("press on a script link")
            << focused("SPAN", {}, pressedOn("javascript:void(0)")) << true;
        QTest::newRow("focused script link")
            << focused("DIV", "JavaScript:go()", pressedOn("plain")) << true;
        QTest::newRow("focused body holding an address, tag in capitals")
            << focused("BODY", "http://a/", pressedOn("plain")) << true;
        QTest::newRow("focused body holding an address, tag in lower case")
            << focused("body", "http://a/", pressedOn("plain")) << false;
        PopupFacts nothingThere = pressedOn("http://b.test/");
        nothingThere.elementAtPoint = false;
        QTest::newRow("no element at the point") << nothingThere << false;
        PopupFacts noPress = pressedOn("http://b.test/");
        noPress.buttonWentDown = false;
        QTest::newRow("no button went down") << noPress << false;

        QTest::newRow("link clicked 0.5 s ago") << clicked(0.5) << false;
        QTest::newRow("link clicked 0.49 s after the kept whole second") << clicked(0.49) << true;
        QTest::newRow("body clicked just now") << focused("BODY", {}, clicked(0.1)) << false;
        for (const char* type : {"submit", "Image", "SUBMIT"}) {
            PopupFacts input = focused("INPUT", {}, clicked(0.1));
            input.activeInputType = type;
            QTest::newRow(qPrintable(QStringLiteral("input %1").arg(type))) << input << true;
        }
        PopupFacts text = focused("INPUT", {}, clicked(0.1));
        text.activeInputType = "text";
        QTest::newRow("input text") << text << false;
        PopupFacts frame = focused("FRAME", {}, clicked(0.1));
        QTest::newRow("frame without a focused element") << frame << false;
        frame.frameHasActiveElement = true;
        QTest::newRow("frame with a focused element") << frame << true;
        QTest::newRow("the click-time test adds to a failed point test")
            << clicked(0.1, pressedOn("plain", focused("A", {}, base()))) << true;
        // The press that chose the entry lies on the menu, long after the
        // page's last click.
        PopupFacts menu = focused("BODY", {}, base());
        menu.chosenFromPageMenu = true;
        QTest::newRow("chosen from the page's menu") << menu << true;
        menu.stopPopups = true;
        menu.fromCurrentTab = false;
        QTest::newRow("chosen from the menu of a tab behind") << menu << false;
    }
    void verdict()
    {
        QFETCH(PopupFacts, facts);
        QFETCH(bool, allowed);
        QCOMPARE(windowAllowed(facts), allowed);
    }

    void blockedListSlidesAfterTenAndReopens()
    {
        StripFixture f;
        BlockedList list(f.bar, f.tabs, f.commands);
        commandbar::Tool* counter = f.bar.tool("sb_Status", "b_blocked");
        counter->setCaption("Blocked:");
        for (int n = 1; n <= 12; ++n)
            list.record(QStringLiteral("short%1").arg(n), QStringLiteral("http://%1.test/").arg(n));

        QCOMPARE(counter->caption(), "Blocked:12");
        QCOMPARE(list.count(), 12);
        const commandbar::Band* menu = f.bar.band("sub_Blocked");
        QCOMPARE(menu->count(), 10);
        for (int i = 0; i < 10; ++i)
            QCOMPARE(menu->at(i)->caption(), QStringLiteral("%1. short%1").arg(i + 3));
        // Entries added to a full list take the last place's identifier.
        QCOMPARE(menu->at(9)->id(), 2810);
        QCOMPARE(menu->at(0)->id(), 2803);

        f.bar.reportClick(menu->at(0));
        QCOMPARE(f.view(f.state.currentTab)->locationUrl(), "http://3.test/");

        // A caption without a number counts from 0; one without ":" is the count.
        counter->setCaption("Blocked: none");
        list.record("s", "http://x.test/");
        QCOMPARE(counter->caption(), "Blocked:1");
        counter->setCaption("Blocked");
        list.record("s", "http://y.test/");
        QCOMPARE(counter->caption(), "1");
    }

    void killRuleStopsListedSitesAndClosesTheirTabs()
    {
        QTemporaryDir dir;
        const platform::ProgramFolder appDir(dir.path());
        KillList kill(appDir);
        QVERIFY(kill.add("http://ads.test/page.html"));
        QVERIFY(!kill.add("no host"));
        QVERIFY(kill.add("https://Track.example/"));
        const KillList read(appDir);
        QVERIFY(read.lists(QUrl("https://x.ads.test/popup")));
        QVERIFY(read.lists(QUrl("http://track.example/")));
        QVERIFY(!read.lists(QUrl("http://notads.test/")));

        StripFixture f;
        f.tabs.createCatchView();
        f.tabs.newTab("http://start.test/", true);
        f.tabs.newTab("http://opener.test/", true);
        BlockedList blocked(f.bar, f.tabs, f.commands);
        platform::ClickHook hook(f.clock);
        RecordingShell shell;
        ScriptedDialogs dialogs;
        ContentFilters filters(
            f.state, f.bar, f.tabs, f.subsystem.every(), f.factory, dialogs,
            [](const QString&, const QString& fallback) { return fallback; }, f.commands);
        PopupBlocker blocker(f.state, f.bar, f.tabs, f.subsystem.every(), hook, f.clock, shell,
                             blocked, read, filters);
        platform::NavigationRequest request{QUrl("http://x.ads.test/"),
                                            platform::NavigationRequest::Kind::Other, true};
        QVERIFY(blocker.allows(*f.view(2), request));
        switches::set(f.bar, cmd::Command::KillPopups, true);
        request.mainFrame = false;
        QVERIFY(blocker.allows(*f.view(2), request));
        request.mainFrame = true;
        QVERIFY(!blocker.allows(*f.view(2), request));
        QCOMPARE(blocked.address(1), "http://x.ads.test/");
        QCOMPARE(shell.played, QStringList{f.state.folder.read("block.wav")});
        QTRY_VERIFY(!f.tabs.view(2));
        QVERIFY(f.tabs.view(1));

        // The catch view's navigation is the blocked window's address, never taken.
        const QString longAddress = "http://popup.test/" + QString(60, 'a');
        QVERIFY(!blocker.allows(*f.tabs.view(0), {QUrl(longAddress)}));
        QCOMPARE(blocked.address(2), longAddress);
        QCOMPARE(shell.played.size(), 1);
        QCOMPARE(f.bar.band("sub_Blocked")->at(1)->caption(), "2. " + ellipsis(longAddress, 50));

        // A page that moves on by itself is killed; typed, redirected, or
        // within a moment of a key press or click, it goes.
        hook.start();
        f.tabs.newTab("http://third.test/", true);
        using Kind = platform::NavigationRequest::Kind;
        const QUrl elsewhere("http://elsewhere.test/");
        QVERIFY(blocker.allows(*f.view(3), {elsewhere, Kind::Typed, true}));
        QVERIFY(blocker.allows(*f.view(3), {elsewhere, Kind::Redirect, true}));
        QObject target;
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(&target, &enter);
        f.clock.now += 0.5;
        QVERIFY(blocker.allows(*f.view(3), {elsewhere, Kind::Link, true}));
        f.clock.now += 0.1;
        QVERIFY(!blocker.allows(*f.view(3), {elsewhere, Kind::Other, true}));
        QCOMPARE(blocked.address(3), "http://elsewhere.test/");
        QTRY_VERIFY(!f.tabs.view(3));
    }

    void securityIndicatorShowsTheCurrentTabInWholeLabels()
    {
        // The cuts as they stand, the short second label included.
        const QString list = "Not secure|Mixed|Secure|";
        QCOMPARE(securityCaption(list, 0), "Not secure");
        QCOMPARE(securityCaption(list, 1), "Mixed|Secur");
        QCOMPARE(securityCaption(list, 2), "Secure");
        QCOMPARE(securityCaption(list, 6), "128-bit");
        QCOMPARE(securityCaption(list, 7), "");
        QCOMPARE(securityCaption("no bars", 0), "");
        QCOMPARE(securityCaption("no bars", 2), "no bar");

        // The shipped skin and language file are laid out to give whole labels.
        QTemporaryDir dir;
        QVERIFY(QFile::copy(QStringLiteral(QUB_SKIN_DIR "/English.lng"), dir.filePath("lng.ini")));
        StripFixture f;
        Language(platform::ProgramFolder(dir.path())).apply(f.bar, "1.0.0");
        SecurityIndicator indicator(f.state, f.bar, f.tabs, f.subsystem.every());
        f.tabs.newTab("https://a.test/", true);
        f.tabs.newTab("http://b.test/", true);
        const commandbar::Tool* tool = f.bar.tool("sb_Status", "b_security");
        QCOMPARE(tool->caption(), "Not encrypted");
        emit f.view(2)->lockLevelChanged(2);
        QCOMPARE(tool->caption(), "Encrypted");
        emit f.view(2)->lockLevelChanged(1);
        QCOMPARE(tool->caption(), "Partly secured");
        // A tab in the background does not speak; the tab shown next does.
        emit f.view(1)->lockLevelChanged(2);
        QCOMPARE(tool->caption(), "Partly secured");
        f.view(1)->securityFacet.level = 2;
        f.tabs.activateTab(1);
        QCOMPARE(tool->caption(), "Encrypted");
        f.tabs.activateTab(2);
        QCOMPARE(tool->caption(), "Not encrypted");
    }
};

QUB_TEST_MAIN(PopupsTest)
#include "tst_popups.moc"
