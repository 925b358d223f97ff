// The address bar on a real combo box with fake views: the narrow trim, the
// keys that send an address where, the typed addresses and their store.
#include "commandbar/CommandBar.h"
#include "commandbar/SkinLoader.h"
#include "history/AddressBar.h"
#include "history/AddressCompleter.h"
#include "history/DragToOpen.h"
#include "history/HistoryStore.h"
#include "platform/UserRegistry.h"
#include "proxy/InwardRequest.h"
#include "support/Fakes.h"
#include "support/Files.h"
#include "support/StripFixture.h"
#include "support/TestMain.h"
#include "tabs/TabStrip.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QTemporaryDir>

using namespace platform;
using namespace commandbar;

namespace {

struct Bar : StripFixture
{
    QComboBox box;
    AddressBar address{box, tabs};

    Bar()
    {
        tabs.openFirstTab();
        box.addItem(QStringLiteral("About:Blank"));
    }
    void type(const QString& text, Qt::KeyboardModifiers modifiers = {})
    {
        box.setEditText(text);
        QTest::keyClick(&box, Qt::Key_Return, modifiers);
    }
};

QStringList items(const QComboBox& box)
{
    QStringList list;
    for (int i = 0; i < box.count(); ++i)
        list << box.itemText(i);
    return list;
}

} // namespace

class AddressTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    // What a page from outside may not ask for but by navigating to it.
    void inwardRequests()
    {
        const QUrl outside("http://news.example/");
        for (const char* inward :
             {"http://192.168.1.1/cgi", "https://10.0.0.7/", "http://172.16.3.4/",
              "http://127.0.0.1/", "http://[::1]:631/", "http://[fd00::1]/",
              "http://169.254.169.254/latest", "http://0.0.0.0:8000/", "ws://router/",
              "http://printer.local/", "http://nas.lan/", "http://localhost:3000/",
              "http://app.localhost/", "http://100.64.1.1/"})
            QVERIFY2(proxy::reachesInward(outside, QUrl(inward)), inward);
        for (const char* outward : {"http://172.32.0.1/", "https://example.org/", "http://8.8.8.8/",
                                    "http://[2001:db8::1]/", "data:text/plain,x", "blob:x"})
            QVERIFY2(!proxy::reachesInward(outside, QUrl(outward)), outward);
        // From inside, or from no page at all, anything goes.
        QVERIFY(!proxy::reachesInward(QUrl("http://192.168.1.10/"), QUrl("http://192.168.1.1/")));
        QVERIFY(!proxy::reachesInward(QUrl("http://intranet/"), QUrl("http://10.0.0.7/")));
        QVERIFY(!proxy::reachesInward(QUrl("file:///tmp/a.html"), QUrl("http://127.0.0.1/")));
        QVERIFY(!proxy::reachesInward(QUrl(), QUrl("http://127.0.0.1/")));
    }

    void narrowTrim_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("sent");
        const auto row = [](const char* name, const QString& text, const QString& sent) {
            QTest::newRow(name) << text << sent;
        };
        row("four characters stay", "  ab", "  ab");
        row("five lose their leading blanks", "  abc", "abc");
        row("trailing blanks stay", "abcdef  ", "abcdef  ");
        row("a long blank run keeps its fifth blank", "     x.test", " x.test");
        row("words keep their blanks", "two words", "two words");
        row("empty", "", "");
    }
    void narrowTrim()
    {
        QFETCH(QString, text);
        QTEST(AddressBar::narrowTrim(text), "sent");
    }

    void keysAndChoicesSendTheAddressWhereTheySay()
    {
        Bar b;
        QSignalSpy sent(&b.address, &AddressBar::addressSent);
        b.type(QStringLiteral("  a.test/one"));
        QCOMPARE(b.view(1)->calls, QStringList{"navigate a.test/one"});
        QCOMPARE(b.box.lineEdit()->selectedText(), QStringLiteral("  a.test/one"));
        // Only Ctrl alone opens a new tab.
        b.type(QStringLiteral("c.test"), Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(b.view(1)->calls.last(), QStringLiteral("navigate c.test"));
        QCOMPARE(b.state.tabCount, 1);
        b.type(QStringLiteral("d.test"), Qt::ControlModifier);
        QCOMPARE(b.state.tabCount, 2);
        QCOMPARE(b.state.currentTab, 2);
        QCOMPARE(b.view(2)->calls, QStringList{"navigate d.test"});
        QCOMPARE(sent.count(), 3);
        QCOMPARE(b.box.count(), 1); // the list is never added to

        // A key only shows an entry; choosing it sends it to the shown tab at once.
        b.box.addItem(QStringLiteral("http://e.test/"));
        b.box.setCurrentIndex(0);
        QTest::keyClick(&b.box, Qt::Key_Down);
        QCOMPARE(b.box.currentText(), QStringLiteral("http://e.test/"));
        QCOMPARE(b.view(2)->calls.last(), QStringLiteral("navigate d.test"));
        emit b.box.activated(1);
        QCOMPARE(b.view(2)->calls.last(), QStringLiteral("navigate http://e.test/"));
    }

    void focusFlagLivesInTheFirstItem()
    {
        Bar b;
        QCOMPARE(b.box.itemData(0).toInt(), 0);
        QFocusEvent in(QEvent::FocusIn);
        QApplication::sendEvent(&b.box, &in);
        QVERIFY(b.address.focusFlag());
        QCOMPARE(b.box.itemData(0).toInt(), 1);
        // Leaving the box with a list entry's text in it sends nothing.
        b.box.addItem(QStringLiteral("http://e.test/"));
        b.box.setEditText(QString());
        QTest::keyClicks(&b.box, QStringLiteral("http://e.test/"));
        QFocusEvent out(QEvent::FocusOut);
        QApplication::sendEvent(&b.box, &out);
        QVERIFY(!b.address.focusFlag());
        QCOMPARE(b.view(1)->calls, QStringList{});
        // With "About:Blank" chosen from the list, the address shown since
        // stays through focus changes.
        b.box.setCurrentIndex(0);
        b.box.setEditText(QStringLiteral("http://shown.test/"));
        QApplication::sendEvent(&b.box, &in);
        QCOMPARE(b.box.currentText(), QStringLiteral("http://shown.test/"));
        QApplication::sendEvent(&b.box, &out);
        QCOMPARE(b.box.currentText(), QStringLiteral("http://shown.test/"));
    }

    void typedAddressesLoadUpToAGapAndRecordNewestFirst()
    {
        QTemporaryDir dir;
        const UserRegistry registry(dir.filePath("sub/registry.ini"));
        auto load = [&] {
            Bar b;
            b.address.loadTypedUrls(registry);
            return items(b.box);
        };
        QCOMPARE(load(), QStringList{"About:Blank"});
        QDir().mkpath(dir.filePath("sub"));
        writeFile(registry.path(), "[Software\\QUB-BROWSER\\TypedURLs]\r\nurl1=http://one/\r\n"
                                   "url2=http://two/\r\nurl4=http://four/\r\n");
        QCOMPARE(load(), (QStringList{"About:Blank", "http://one/", "http://two/"}));
        writeFile(registry.path(), "[software\\qub-browser\\typedurls]\r\nurl0=a\r\n");
        QCOMPARE(load(), (QStringList{"About:Blank", "a"}));

        QDir(dir.filePath("sub")).removeRecursively();
        for (int n = 1; n <= 30; ++n)
            recordTypedUrl(registry, QStringLiteral("http://%1/").arg(n));
        recordTypedUrl(registry, QStringLiteral("http://20/"));
        const QStringList typed = load().mid(1);
        QCOMPARE(typed.size(), maxTypedUrls);
        QCOMPARE(typed.first(), QStringLiteral("http://20/"));
        QCOMPARE(typed.at(1), QStringLiteral("http://30/"));
        QCOMPARE(typed.count(QStringLiteral("http://20/")), 1);
        QCOMPARE(typed.last(), QStringLiteral("http://6/"));
    }

    void completerKeepsEachAddressOnceNewestFirst()
    {
        AddressCompleter completer;
        completer.addAddress(QStringLiteral("http://example.test/a"));
        completer.addAddress(QStringLiteral("about:blank"));
        completer.addAddress(QStringLiteral("http://other.test/"));
        completer.addAddress(QStringLiteral("http://example.test/a"));
        QCOMPARE(completer.addresses(),
                 (QStringList{"http://example.test/a", "http://other.test/"}));

        // What the user typed before comes first, then history's finds, once.
        QTemporaryDir dir;
        HistoryStore store(dir.filePath("History.sqlite"));
        store.addUrl("http://example.test/a", "A");
        store.addUrl("https://www.example.test/b", "Bee");
        store.addUrl("http://elsewhere.test/", "An example page");
        completer.setHistory(store);
        completer.suggest("EXAMPLE");
        QCOMPARE(completer.suggestions(), QStringList{"http://example.test/a"});
        QTRY_COMPARE(completer.suggestions(),
                     (QStringList{"http://example.test/a", "https://www.example.test/b",
                                  "http://elsewhere.test/"}));
        // An answer to text no longer in the box is dropped, whenever it comes.
        QSignalSpy answered(&store, &HistoryStore::completed);
        completer.suggest("zzz");
        QTRY_VERIFY(!answered.isEmpty());
        QVERIFY(completer.suggestions().isEmpty());
        emit store.completed("example", {"http://example.test/a"});
        QVERIFY(completer.suggestions().isEmpty());

        // Only what names a scheme in its first eight characters opens.
        QVERIFY(DragToOpen::opensFromDrag("https://x.test/"));
        QVERIFY(!DragToOpen::opensFromDrag("word"));
        QVERIFY(!DragToOpen::opensFromDrag("see also http://x.test/"));
    }
};

QUB_TEST_MAIN(AddressTest)
#include "tst_address.moc"
