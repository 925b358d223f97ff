// The page commands against fake views: answers of the page that come too
// late never change a menu, and the commands reach the page they act on.
#include "commands/CommandsSubsystem.h"
#include "support/StripFixture.h"
#include "support/TestMain.h"

using namespace platform;

class PageCommandsTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void lateAnswersLeaveTheEditMenuAlone()
    {
        StripFixture f;
        ScriptedDialogs dialogs;
        RecordingShell shell;
        CommandsSubsystem commands(f.bar, f.state, f.tabs, dialogs, shell, f.commands, f.events);
        f.tabs.newTab(QStringLiteral("http://one.test/"), true);
        f.tabs.newTab(QStringLiteral("http://two.test/"), true);
        FakeEditing& one = f.view(1)->editingFacet;
        FakeEditing& two = f.view(2)->editingFacet;
        one.enabled = {{"copy", true}, {"selectall", true}};
        two.enabled = {{"paste", true}};
        Band* edit = f.bar.band("sub_Edit");
        auto enabled = [&](const char* key) { return f.bar.tool("sub_Edit", key)->enabled(); };

        // Asked on tab 2, answered after tab 1 came to the front.
        f.bar.reportDropDown(edit);
        f.tabs.activateTab(1);
        two.pending.answerAll();
        QVERIFY(!enabled("b_paste"));

        // Asked on tab 1, then on tab 2: tab 1's answers come when it is in
        // front again, but belong to a menu shown before.
        f.bar.reportDropDown(edit);
        f.tabs.activateTab(2);
        f.bar.reportDropDown(edit);
        f.tabs.activateTab(1);
        one.pending.answerAll();
        QVERIFY(!enabled("b_copy"));

        f.bar.reportDropDown(edit);
        one.pending.answerAll();
        QVERIFY(enabled("b_selectall"));
        QVERIFY(enabled("b_copy"));
        QVERIFY(!enabled("b_paste"));

        f.bar.reportClick(f.bar.tool("sub_Edit", "b_copy"));
        QCOMPARE(one.ran, QStringList{"copy"});
        QVERIFY(two.ran.isEmpty());
    }
};

QUB_TEST_MAIN(PageCommandsTest)
#include "tst_pagecommands.moc"
