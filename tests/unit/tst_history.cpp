// The history: the store on disk, the sorted snapshot with its old quirks,
// the tree by day and site, and what a bad store file does.
#include "history/CURLHistory.h"
#include "history/HistoryPanel.h"
#include "history/HistoryStore.h"
#include "history/HistoryTree.h"
#include "support/Fakes.h"
#include "support/Files.h"
#include "support/StripFixture.h"
#include "support/TestMain.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <QTreeView>

using namespace platform;

namespace {

QStringList addresses(CURLHistory& history)
{
    QStringList urls;
    for (URLHistoryItem& item : history)
        urls << item.URL();
    return urls;
}

} // namespace

class HistoryTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void storeKeepsVisitsAcrossRuns()
    {
        QTemporaryDir dir;
        const QString path = dir.path() + "/QUB-BROWSER/History.sqlite";
        const qint64 now = QDateTime::currentMSecsSinceEpoch();
        {
            HistoryStore store(path);
            QVERIFY(store.isOpen());
            // What the user visited is theirs alone.
            QVERIFY(ownerOnly(path));
            QVERIFY(ownerOnly(dir.path() + "/QUB-BROWSER"));
            QVERIFY(store.problem().isEmpty());
            store.addUrl("https://www.example.org/news", "News");
            store.addUrl("https://www.example.org/news", "");
            store.addUrl("http://other.test/example", "Other", 0, now - 1000);
            store.addUrl("file:///tmp/page.html", "File");
            store.addUrl("http://old.test/", "Old", 0, now - qint64(40) * 24 * 3600 * 1000);
        }
        HistoryStore store(path);
        QCOMPARE(store.records().size(), 4u);
        // What a page names at any length: too long an address, or one that
        // is its own content, is not kept; a long title is kept to its start.
        store.addUrl("http://long.test/" + QString(HistoryStore::maxUrlLength, 'x'), "Long");
        store.addUrl("data:text/html,<p>x", "Data");
        store.addUrl("http://titled.test/", QString(5000, 't'));
        QCOMPARE(store.records("http://long").size(), 0u);
        QCOMPARE(store.records("data:").size(), 0u);
        QCOMPARE(store.records("http://titled.test/")[0].title.size(),
                 HistoryStore::maxTitleLength);
        store.deleteUrl("http://titled.test/");
        QCOMPARE(store.records("http").size(), 3u);
        std::vector<HistoryRecord> news = store.records("https://www.example.org/news");
        QCOMPARE(news.size(), 1u);
        // A visit without a title keeps the one the page had.
        QCOMPARE(news[0].title, "News");
        QVERIFY(news[0].lastVisited >= now);

        // The site from its start first, then anything holding the text.
        QCOMPARE(store.complete("exa", 10),
                 QStringList({"https://www.example.org/news", "http://other.test/example"}));
        QCOMPARE(store.complete("OTHER", 1), QStringList({"http://other.test/example"}));
        QCOMPARE(store.complete("file", 10), QStringList({"file:///tmp/page.html"}));
        QVERIFY(store.complete("", 10).isEmpty());

        // Beyond the latest two thousand, text is found through its index,
        // which follows every change of a title and every deletion.
        for (int n = 0; n < 2100; ++n)
            store.addUrl(QStringLiteral("http://filler.test/%1").arg(n), "Filler", 0, now + n);
        store.addUrl("http://other.test/example", "Renamed page", 0, now - 1000);
        QCOMPARE(store.complete("renamed PAGE", 5), QStringList({"http://other.test/example"}));
        QVERIFY(store.complete("Other", 5).size() == 1);
        QVERIFY(store.complete("xyzzy", 5).isEmpty());
        for (int n = 0; n < 2100; ++n)
            store.deleteUrl(QStringLiteral("http://filler.test/%1").arg(n));
        QVERIFY(store.complete("filler", 5).isEmpty());

        store.expire(30);
        QCOMPARE(store.records().size(), 3u);
        store.deleteUrl("file:///tmp/page.html");
        QCOMPARE(store.records().size(), 2u);
        // Past its limit of rows, the oldest visits go.
        store.setRowLimit(2);
        store.addUrl("http://newest.test/", "Newest");
        QCOMPARE(store.records().size(), 2u);
        QCOMPARE(store.records("http://newest.test/").size(), 1u);
        store.clear();
        QVERIFY(store.records().empty());
        // Nothing of a visit is left to read in the file or its log.
        for (const char* file : {"", "-wal"})
            QVERIFY2(!readFile(path + file).contains("other.test"), file);
    }

    void badFilesAreMovedAsideOrSaidToBeUnusable()
    {
        QTemporaryDir dir;
        const QString path = dir.path() + "/History.sqlite";
        writeFile(path, QByteArray(8192, 'x'));
        {
            HistoryStore store(path);
            QVERIFY(store.isOpen());
            QVERIFY(store.problem().contains("could not be read"));
            QCOMPARE(QDir(dir.path()).entryList({"History.sqlite.bad-*"}).size(), 1);
            store.addUrl("http://new.test/", "New");
            QCOMPARE(store.records().size(), 1u);
        }

        // A file where the folder should be: nothing can be kept, and the
        // snapshot says it cannot bind to the history, as it always did.
        writeFile(dir.path() + "/file", {});
        HistoryStore none(dir.path() + "/file/History.sqlite");
        QVERIFY(!none.isOpen());
        QVERIFY(none.problem().contains("cannot be opened"));
        none.addUrl("http://lost.test/", "");
        ScriptedDialogs dialogs;
        CURLHistory history(none, dialogs);
        QCOMPARE(history.Count(), 0);
        QCOMPARE(dialogs.asked, QStringList({"cannot bindto"}));
    }

    void snapshotSortsByAddressAndKeepsItsQuirks()
    {
        QTemporaryDir dir;
        HistoryStore store(dir.path() + "/History.sqlite");
        ScriptedDialogs dialogs;
        CURLHistory history(store, dialogs);
        QCOMPARE(history.Count(), 0);
        for (const char* url : {"http://b.test/", "http://a.test/", "Http://z.test/", "5"})
            history.AddURL(url, {}, 0);
        QCOMPARE(history.Count(), 0);
        history.Refresh();
        // Code unit order: digits, then capitals, then small letters.
        QCOMPARE(addresses(history),
                 QStringList({"5", "Http://z.test/", "http://a.test/", "http://b.test/"}));
        // The number's text is the address deleted.
        history.DeleteURL(5, 0);
        QCOMPARE(history.Count(), 3);
        QCOMPARE(history.Remove(1).URL(), "Http://z.test/");
        QCOMPARE(history.Count(), 2);
        QCOMPARE(store.records().size(), 2u);

        // Every read of a time moves it by the zone's offset once more.
        URLHistoryItem& item = history.Item(1);
        const QDateTime first = item.LastVisited();
        const int offset = QDateTime::currentDateTime().offsetFromUtc();
        QCOMPARE(first.secsTo(item.LastVisited()), offset);
        history.Clear();
        QCOMPARE(history.Count(), 0);
        QVERIFY(dialogs.asked.isEmpty());
    }

    void treeGroupsByDayAndSiteAndFillsInSteps()
    {
        QTemporaryDir dir;
        HistoryStore store(dir.path() + "/History.sqlite");
        const qint64 now = QDateTime::currentMSecsSinceEpoch();
        const qint64 day = qint64(24) * 3600 * 1000;
        store.addUrl("http://a.test/one", "One", 0, now);
        store.addUrl("http://a.test/two", "   ", 0, now);
        store.addUrl("https://b.test:8080/x", "Bee", 0, now);
        store.addUrl("http://a.test/old", "Old", 0, now - 3 * day);
        store.addUrl("file:///not/shown.html", "File", 0, now);
        ScriptedDialogs dialogs;
        CURLHistory history(store, dialogs);
        HistoryTree tree;
        QAbstractItemModelTester tester(&tree);
        tree.refresh(history);
        QVERIFY(!tree.refreshing());

        const QLocale locale;
        const QString today = locale.toString(QDate::currentDate(), QLocale::ShortFormat);
        const QString earlier = locale.toString(
            QDateTime::fromMSecsSinceEpoch(now - 3 * day).date(), QLocale::ShortFormat);
        QCOMPARE(tree.rowCount(), 2);
        const QModelIndex todayNode = tree.find("Root" + today);
        QCOMPARE(todayNode.data().toString(), "Today");
        QCOMPARE(tree.find("Root" + earlier).data().toString(), earlier);
        const QModelIndex site = tree.find("Domain" + today + "a.test");
        QCOMPARE(site.parent(), todayNode);
        QCOMPARE(tree.rowCount(site), 2);
        QCOMPARE(tree.index(0, 0, site).data().toString(), "One");
        // A blank title shows the address.
        QCOMPARE(tree.index(1, 0, site).data().toString(), "http://a.test/two");
        QCOMPARE(tree.index(1, 0, site).data(HistoryTree::TagRole).toString(), "http://a.test/two");
        QCOMPARE(tree.find("Domain" + today + "b.test:8080").data().toString(), "b.test:8080");
        QVERIFY(tree.find("Domain" + earlier + "a.test").isValid());

        // Clicks and tooltips of the panel; a big history fills in steps.
        StripFixture fixture;
        fixture.tabs.openFirstTab();
        HistoryPanel panel(tree, fixture.tabs);
        panel.resize(300, 400);
        panel.view()->expandAll();
        panel.openNode(site);
        QCOMPARE(fixture.state.tabCount, 1);
        panel.openNode(tree.index(0, 0, site));
        QCOMPARE(fixture.state.tabCount, 2);
        QCOMPARE(fixture.view(2)->locationUrl(), "http://a.test/one");
        const QPoint onDay = panel.view()->visualRect(todayNode).center();
        QCOMPARE(panel.tooltipAt(onDay), "Click to open!");
        QCOMPARE(panel.tooltipAt(panel.view()->visualRect(tree.index(0, 0, site)).center()),
                 "http://a.test/one");
        for (int i = 0; i < HistoryTree::step + 10; ++i)
            store.addUrl(QStringLiteral("http://many.test/%1").arg(i), {}, 0, now);
        tree.refresh(history);
        QVERIFY(tree.refreshing());
        QCOMPARE(panel.tooltipAt(onDay), "Refreshing...");
        QTRY_VERIFY(!tree.refreshing());
        QCOMPARE(tree.rowCount(tree.find("Domain" + today + "many.test")), HistoryTree::step + 10);
        QVERIFY(panel.view()->isExpanded(tree.find("Root" + today)));
        QVERIFY(!panel.view()->isExpanded(tree.find("Root" + earlier)));
    }
};

QUB_TEST_MAIN(HistoryTest)
#include "tst_history.moc"
