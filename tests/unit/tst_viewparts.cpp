// The pure parts of a browser view (status texts, addresses, the lock level)
// and the new-window policy as the tab strip carries out its verdicts.
#include "platform/browser/AddressUrl.h"
#include "platform/browser/ScriptDialogLimit.h"
#include "platform/browser/StatusText.h"
#include "platform/browser/ViewFacets.h"
#include "platform/browser/ViewPolicies.h"
#include "support/StripFixture.h"
#include "support/TestMain.h"

using namespace platform;

namespace {

class FakeNewWindowRequest : public NewWindowRequest
{
public:
    explicit FakeNewWindowRequest(bool background = false) : background_(background) {}
    QUrl url() const override { return QUrl(QStringLiteral("http://example.org/popup")); }
    bool userInitiated() const override { return false; }
    bool chosenFromPageMenu() const override { return false; }
    bool inBackground() const override { return background_; }
    void openIn(BrowserView& view) override { openedIn = view.index(); }
    int openedIn = -1;

private:
    bool background_;
};

class FixedVerdict : public NewWindowPolicy
{
public:
    explicit FixedVerdict(Verdict verdict) : verdict_(verdict) {}
    Verdict decide(BrowserView& opener, const NewWindowRequest&) override
    {
        openers << opener.index();
        return verdict_;
    }
    QList<int> openers;

private:
    Verdict verdict_;
};

} // namespace

class ViewPartsTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void statusTexts_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<int>("errorCode");
        QTest::addColumn<bool>("httpStatus");
        QTest::addColumn<QString>("expected");
        using Phase = LoadReport::Phase;
        QTest::newRow("started") << int(Phase::Started) << 0 << false
                                 << "Opening http://example.org/a b ...";
        QTest::newRow("done") << int(Phase::Succeeded) << 0 << false << "Done";
        QTest::newRow("stopped") << int(Phase::Stopped) << 0 << false << "Stopped";
        QTest::newRow("called off") << int(Phase::Failed) << -3 << false << "Done";
        QTest::newRow("server's error page") << int(Phase::Failed) << 404 << true << "Done";
        QTest::newRow("unreachable")
            << int(Phase::Failed) << -105 << false
            << "Cannot open http://example.org/a b: net::ERR_NAME_NOT_RESOLVED";
    }
    void statusTexts()
    {
        QFETCH(int, phase);
        QFETCH(int, errorCode);
        QFETCH(bool, httpStatus);
        QFETCH(QString, expected);
        LoadReport report;
        report.phase = LoadReport::Phase(phase);
        report.url = QUrl(QStringLiteral("http://example.org/a%20b"));
        report.errorCode = errorCode;
        report.httpStatus = httpStatus;
        report.errorText = QStringLiteral("net::ERR_NAME_NOT_RESOLVED");
        QCOMPARE(statusText(report), expected);
    }

    void addressesAndLockLevels()
    {
        // The engine refuses any about: page not named in lower case.
        QCOMPARE(urlFromAddress("About:Blank"), QUrl("about:blank"));
        QCOMPARE(urlFromAddress("ABOUT:BLANK"), QUrl("about:blank"));
        QCOMPARE(urlFromAddress("example.org/Path"), QUrl("http://example.org/Path"));
        QCOMPARE(urlFromAddress("https://Example.org/Path?Q=A"),
                 QUrl("https://example.org/Path?Q=A"));

        // Typed words are searched for; anything that names a place is an address.
        for (const char* address :
             {"example.org/path", "localhost:8080", "LOCALHOST", "host:8080/x", "192.168.1.1",
              "[::1]:80", "about:Blank", "view-source:http://a.test/", "/home/me/My File.html",
              "~/notes.html", "C:\\dir\\page.htm", " https://a.test/a b "})
            QVERIFY2(isAddress(address), address);
        for (const char* words : {"two words", "news", "what:is this", "what:is", "", "  "})
            QVERIFY2(!isAddress(words), words);
        QCOMPARE(searchUrl("https://s.test/?q={QUERY}&from={query}", " caf\u00e9 & <tea>  cups"),
                 QUrl("https://s.test/?q=caf%C3%A9%20%26%20%3Ctea%3E%20cups&from=caf%C3%A9%20%26%20"
                      "%3Ctea%3E%20cups"));

        const std::pair<const char*, const char*> domains[] = {
            {"http://www.example.org/a/b", "www.example.org"},
            {"https://user:pw@host.test:8080/x?y", "user:pw@host.test:8080"},
            {"http://host.test", "host.test"},
            {"example.org/path", "xample.org"},
            {"file:///tmp/page.html", ""},
            {"a", ""},
            {"", ""},
            {"view-source:http://a.test/", "a.test"}};
        for (const auto& [address, domain] : domains)
            QCOMPARE(getDomain(address), domain);

        QCOMPARE(lockLevel(QUrl("http://example.org/"), true), 0);
        QCOMPARE(lockLevel(QUrl("https://example.org/"), false), 2);
        QCOMPARE(lockLevel(QUrl("https://example.org/"), true), 1);
        QCOMPARE(lockLevel(QUrl("about:blank"), false), 0);
        QCOMPARE(lockLevel(QUrl("file:///tmp/a.html"), false), 0);
    }

    void aDialogStormIsCutShortButSpacedDialogsAreNot()
    {
        ScriptDialogLimit storm;
        for (qint64 t = 0; t < 3 * 100; t += 100) {
            QVERIFY(storm.allows());
            storm.answered(t, t + 50);
        }
        QVERIFY(!storm.allows());
        storm.reset();
        QVERIFY(storm.allows());

        // A user reading each dialog for a while is never cut off.
        ScriptDialogLimit spaced;
        for (qint64 t = 0; t < 10 * 2000; t += 2000) {
            QVERIFY(spaced.allows());
            spaced.answered(t, t + 900);
        }
        QVERIFY(spaced.allows());
    }

    void theNewWindowPolicyDecidesWhereAWindowOpens()
    {
        StripFixture f;
        f.tabs.createCatchView();
        f.tabs.openFirstTab();
        FakeBrowserView& opener = *f.view(1);

        // Until a policy is set, every window opens in a new tab.
        FakeNewWindowRequest first;
        emit opener.newWindowRequested(first);
        QCOMPARE(first.openedIn, 2);
        QCOMPARE(f.state.currentTab, 2);
        FakeNewWindowRequest background(true);
        emit opener.newWindowRequested(background);
        QCOMPARE(background.openedIn, 3);
        QCOMPARE(f.state.currentTab, 2);

        FixedVerdict catching(NewWindowPolicy::Verdict::Catch);
        f.tabs.setNewWindowPolicy(catching);
        FakeNewWindowRequest caught;
        emit opener.newWindowRequested(caught);
        QCOMPARE(caught.openedIn, 0);
        QCOMPARE(catching.openers, QList<int>{1});
        QCOMPARE(f.tabs.tabViews().size(), size_t(3));

        FixedVerdict refusing(NewWindowPolicy::Verdict::Refuse);
        f.tabs.setNewWindowPolicy(refusing);
        FakeNewWindowRequest refused;
        emit f.view(2)->newWindowRequested(refused);
        QCOMPARE(refused.openedIn, -1);
        QCOMPARE(refusing.openers, QList<int>{2});
        QCOMPARE(f.tabs.tabViews().size(), size_t(3));

        // While the program shuts down no policy is even asked.
        f.state.shuttingDown = true;
        FakeNewWindowRequest late;
        emit opener.newWindowRequested(late);
        QCOMPARE(late.openedIn, -1);
        QCOMPARE(refusing.openers.size(), 1);
    }
};

QUB_TEST_MAIN(ViewPartsTest)
#include "tst_viewparts.moc"
