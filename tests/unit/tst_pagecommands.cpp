// The page commands against fake views: answers of the page that come too
// late never change a menu, and the commands reach the page they act on.
#include "commands/CommandsSubsystem.h"
#include "core/Keys.h"
#include "support/StripFixture.h"
#include "support/TestMain.h"

using namespace platform;
using namespace commandbar;

namespace {

// The tab strip with the commands subsystem on a plain window, and one tab.
struct CommandsFixture : StripFixture
{
    ScriptedDialogs dialogs;
    RecordingShell shell;
    QWidget window;
    CommandsSubsystem commandSet{window, bar,     state,    subsystem, dialogs,
                                 shell,  factory, commands, events};
    CommandsFixture() { tabs.newTab(QStringLiteral("http://one.test/"), true); }
};

} // namespace

class PageCommandsTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void lateAnswersLeaveTheEditMenuAlone()
    {
        CommandsFixture f;
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
        two.answerAll();
        QVERIFY(!enabled("b_paste"));

        // Asked on tab 1, then on tab 2: tab 1's answers come when it is in
        // front again, but belong to a menu shown before.
        f.bar.reportDropDown(edit);
        f.tabs.activateTab(2);
        f.bar.reportDropDown(edit);
        f.tabs.activateTab(1);
        one.answerAll();
        QVERIFY(!enabled("b_copy"));

        f.bar.reportDropDown(edit);
        one.answerAll();
        QVERIFY(enabled("b_selectall"));
        QVERIFY(enabled("b_copy"));
        QVERIFY(!enabled("b_paste"));
    }

    // Quick save hands the saver the browser's own proxy in an environment,
    // which only the user can read, and puts nothing on the command line,
    // which every local user can, that might be a secret; offline it starts
    // nothing.
    void quickSaveHandsOverNoSecretInTheOpen()
    {
        CommandsFixture f;
        FakeBrowserView* view = f.view(1);
        view->navigate(QStringLiteral("http://ann:pw@mail.test/inbox?token=s3cret#m1"));
        view->documentFacet.answers = {QStringLiteral("<body>mail</body>")};
        f.commands.run(cmd::Command::QuickSave);
        QCOMPARE(f.shell.opened, QStringList{"qsexdll url:http://mail.test/inbox"});
        QCOMPARE(f.shell.startedWith.value("QUB_SAVER_PROXY"),
                 QStringLiteral("http://qub:%1@127.0.0.1:%2")
                     .arg(f.factory.proxy.secret())
                     .arg(f.factory.proxy.port()));
        // It saves into the user's folder, wherever it is installed itself.
        QVERIFY(f.shell.startedWith.contains("QUB_APPDIR"));
        QCOMPARE(f.shell.startedWith.value("QUB_APPDIR"), f.state.folder.own());

        f.shell.opened.clear();
        f.factory.connectionState.setOffline(true);
        view->documentFacet.answers = {QStringLiteral("<body>mail</body>")};
        f.commands.run(cmd::Command::QuickSave);
        QVERIFY(f.shell.opened.isEmpty());
        QCOMPARE(f.dialogs.asked.size(), 1);
        QVERIFY(f.dialogs.asked[0].contains("working offline"));
    }

    void fullScreenComesBackToTheWindowItLeft()
    {
        CommandsFixture f;
        auto shown = [&](const QString& band) { return f.bar.band(band)->visible(); };
        auto checked = [&](const QString& band) {
            return f.bar.tool(band, key::fullScreen)->checked();
        };
        auto click = [&] { f.bar.reportClick(f.bar.tool(key::viewMenu, key::fullScreen)); };

        f.window.setGeometry(40, 50, 600, 400);
        f.window.show();
        f.bar.band(key::addressBar)->setVisible(false);
        click();
        QVERIFY(f.window.isFullScreen());
        QCOMPARE(f.view(1)->focusCalls, 1);
        click();
        QVERIFY(!f.window.isFullScreen() && !f.window.isMaximized());
        QCOMPARE(f.window.geometry(), QRect(40, 50, 600, 400));
        QVERIFY(!checked(key::viewMenu) && !checked(key::mainBar));
        QVERIFY(shown(key::menuBar) && shown(key::statusBar) && shown(key::addressBar));
        QVERIFY(!f.bar.band(key::mainBar)->floating());

        // A page's full screen: in and out with the page, and a window that was
        // maximised is maximised again.
        f.window.showMaximized();
        f.view(1)->calls.clear();
        emit f.view(1)->fullScreenRequested(true);
        QVERIFY(f.window.isFullScreen());
        emit f.view(1)->fullScreenRequested(false);
        QVERIFY(f.window.isMaximized());
        QVERIFY(f.view(1)->calls.isEmpty());
        // Leaving by the toolbar takes the page out of its full screen too.
        emit f.view(1)->fullScreenRequested(true);
        f.bar.reportClick(f.bar.tool(key::mainBar, key::fullScreen));
        QVERIFY(f.window.isMaximized());
        QCOMPARE(f.view(1)->calls, QStringList{"exit full screen"});
    }
};

QUB_TEST_MAIN(PageCommandsTest)
#include "tst_pagecommands.moc"
