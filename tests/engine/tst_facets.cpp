// The view facets and policies on the real engine: what each does shows in
// the page and is read back, answers come from the document and never from
// a closed tab, and a refused navigation leaves the page where it was.
#include "support/EngineApp.h"
#include "support/LocalHttpServer.h"
#include "support/PageProbes.h"
#include "support/TestMain.h"

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
        server.setPage("/refused.html", titled("Refused"));
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
    }

    void aRefusedNavigationLeavesThePage()
    {
        RefuseWord refuseOne("/refused.html");
        EngineApp app;
        app.factory.addNavigationPolicy(refuseOne);
        WebEngineBrowserView* view = app.startAt(server.url("/text.html"), "Facets");
        QVERIFY(view);
        view->navigate(server.url("/refused.html"));
        QTRY_VERIFY_WITH_TIMEOUT(view->readyState() == BrowserView::Complete, 20000);
        QCOMPARE(server.requests("/refused.html"), 0);
        QCOMPARE(view->title(), QStringLiteral("Facets"));
    }
};

QUB_TEST_MAIN(FacetsTest)
#include "tst_facets.moc"
