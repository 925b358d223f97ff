// The view facets and policies on the real engine: what each does shows in
// the page and is read back, answers come from the document and never from
// a closed tab, offline keeps every request on the machine, and the policies
// decide where navigations and windows go.
#include "platform/engine/PageNotice.h"
#include "support/EngineApp.h"
#include "support/LocalHttpServer.h"
#include "support/PageProbes.h"
#include "support/TestMain.h"

#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <optional>

using namespace platform;

namespace {

// Refuses every navigation to an address containing a word.
class RefuseWord : public NavigationPolicy
{
public:
    explicit RefuseWord(QString word) : word_(std::move(word)) {}
    bool allows(BrowserView&, const NavigationRequest& request) override
    {
        return !request.url.toString().contains(word_);
    }

private:
    QString word_;
};

class CatchEveryWindow : public NewWindowPolicy
{
public:
    Verdict decide(BrowserView&, const NewWindowRequest&) override { return Verdict::Catch; }
};

} // namespace

class FacetsTest : public QObject
{
    Q_OBJECT
    LocalHttpServer server;

private slots:
    void initTestCase()
    {
        server.setPage("/text.html", titled("Facets", "<p>apple pear apple</p><p>Apple</p>"
                                                      "<script>var pageSecret = 1;</script>"));
        server.setPage("/two.html", titled("Two"));
        server.setPage("/refused.html", titled("Refused"));
        server.setPage("/opener.html",
                       titled("Opener", "<script>window.open('/two.html');</script>"));
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void facetsActOnThePageAndReadItBack()
    {
        EngineApp app;
        WebEngineBrowserView* view = app.startAt(server.url("/text.html"), "Facets");
        QVERIFY(view);

        // The menus' tests set the five levels; a factor set otherwise is none.
        view->engineView()->page()->setZoomFactor(1.33);
        QCOMPARE(view->zoom().level(), -1);

        // The agent's world sees the document but not the page's scripts.
        std::optional<QVariant> title, secret;
        view->document().ask("document.title", [&](const QVariant& v) { title = v; });
        view->document().ask("typeof pageSecret", [&](const QVariant& v) { secret = v; });
        QTRY_VERIFY_WITH_TIMEOUT(title, 20000);
        QCOMPARE(title->toString(), QStringLiteral("Facets"));
        QTRY_VERIFY_WITH_TIMEOUT(secret, 20000);
        QCOMPARE(secret->toString(), QStringLiteral("undefined"));

        // An answer on its way when the tab closes never arrives.
        app.window->parts().tabs.newTab(server.url("/text.html"), true);
        QPointer<BrowserView> closing = app.window->parts().tabs.view(2);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(closing, "Facets"), 20000);
        bool heard = false;
        closing->document().ask("document.title", [&](const QVariant&) { heard = true; });
        app.window->parts().tabs.closeTab(2);
        QTRY_VERIFY(!closing);
        QVERIFY(!heard);

        // Saving writes where the user already chose, without asking again.
        const QString path = app.appDir + "saved.html";
        view->printing().saveAs(path, PrintingFacet::SaveFormat::SingleHtml);
        QTRY_VERIFY_WITH_TIMEOUT(QFile(path).size() > 0, 20000);
        QFile saved(path);
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QVERIFY(saved.readAll().contains("apple pear apple"));
        QVERIFY(app.dialogs.asked.isEmpty());
    }

    void lockLevelAndOffline()
    {
        LocalHttpsServer secure;
        secure.setPage("/secret.html", titled("Secret"));
        EngineApp app;
        WebEngineBrowserView* view = app.startAt(server.url("/text.html"), "Facets");
        QVERIFY(view);
        QCOMPARE(view->security().lockLevel(), 0);

        // A certificate let through by the user makes the page mixed, not secure.
        QSignalSpy levels(view, &BrowserView::lockLevelChanged);
        view->navigate(secure.url("/secret.html"));
        QTRY_VERIFY_WITH_TIMEOUT(view->notice(), 20000);
        for (QPushButton* b : view->widget()->findChildren<QPushButton*>())
            if (b->text() == "Proceed anyway")
                QTest::mouseClick(b, Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Secret"), 20000);
        QCOMPARE(view->security().lockLevel(), 1);
        QCOMPARE(levels.first()[0].toInt(), 1);

        ConnectionState& connection = app.factory.connection();
        connection.setOffline(true);
        QVERIFY(connection.offline());
        QSignalSpy status(view, &BrowserView::statusTextChanged);
        view->navigate(server.url("/two.html"));
        QTRY_VERIFY_WITH_TIMEOUT(
            !status.isEmpty() && status.last()[0].toString().startsWith("Cannot open"), 20000);
        QCOMPARE(server.requests("/two.html"), 0);
        QCOMPARE(view->security().lockLevel(), 0);
        view->navigate("data:text/html,<title>Local</title>");
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Local"), 20000);

        connection.setOffline(false);
        view->navigate(server.url("/two.html"));
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Two"), 20000);
    }

    void policiesDecideNavigationsAndWindows()
    {
        RefuseWord refuseOne("/refused.html");
        AllowEveryNavigation allowAll;
        CatchEveryWindow catchAll;
        EngineApp app;
        app.factory.setNavigationPolicy(refuseOne);
        MainWindow& w = *app.window;
        w.parts().tabs.setNewWindowPolicy(catchAll);
        QVERIFY(w.start(server.url("/text.html")));
        BrowserView* view = w.parts().tabs.view(1);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Facets"), 20000);

        view->navigate(server.url("/refused.html"));
        QTRY_VERIFY_WITH_TIMEOUT(view->readyState() == BrowserView::Complete, 20000);
        QCOMPARE(server.requests("/refused.html"), 0);
        QCOMPARE(view->title(), QStringLiteral("Facets"));

        // The window of a page goes to the catch view, where the navigation
        // policy is asked for it as for any other.
        app.factory.setNavigationPolicy(allowAll);
        view->navigate(server.url("/opener.html"));
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(0), "Two"), 20000);
        QCOMPARE(w.parts().tabs.tabViews().size(), size_t(1));

        // "About:Blank" in any case is the engine's blank page.
        w.parts().addressBox->setEditText("About:Blank");
        QTest::keyClick(w.parts().addressBox, Qt::Key_Return);
        QTRY_COMPARE_WITH_TIMEOUT(app.engineView(1)->engineView()->url(), QUrl("about:blank"),
                                  20000);
    }
};

QUB_TEST_MAIN(FacetsTest)
#include "tst_facets.moc"
