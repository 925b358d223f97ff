// The history on the real engine: visits of every tab recorded with their
// titles and shown by day and site, a click on an address opening it, and
// links dragged out of a page by a real pointer.
#include "history/AddressCompleter.h"
#include "history/HistoryPanel.h"
#include "history/HistoryStore.h"
#include "history/HistorySubsystem.h"
#include "platform/UserRegistry.h"
#include "support/EngineApp.h"
#include "support/LocalHttpServer.h"
#include "support/TestMain.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLocale>
#include <QProcess>
#include <QSignalSpy>
#include <QTreeView>

namespace {

// Moves the real pointer as a hand would: press at from, a first small step
// so the page sees a drag begin, then on to each point, and release.
void dragWithPointer(QPoint from, const QList<QPoint>& through)
{
    QStringList steps = {"mousemove",
                         QString::number(from.x()),
                         QString::number(from.y()),
                         "sleep",
                         "0.3",
                         "mousedown",
                         "1",
                         "sleep",
                         "0.3",
                         "mousemove",
                         QString::number(from.x() + 15),
                         QString::number(from.y() + 10)};
    for (const QPoint& point : through)
        steps << "sleep"
              << "0.3"
              << "mousemove" << QString::number(point.x()) << QString::number(point.y());
    steps << "sleep"
          << "0.4"
          << "mouseup"
          << "1";
    QProcess xdotool;
    xdotool.start(QStringLiteral("xdotool"), steps);
    QVERIFY(xdotool.waitForStarted());
    // The drag runs in the program's own loop while the pointer moves.
    QTRY_VERIFY_WITH_TIMEOUT(xdotool.state() == QProcess::NotRunning, 15000);
    QCOMPARE(xdotool.exitCode(), 0);
}

} // namespace

class HistoryEngineTest : public QObject
{
    Q_OBJECT
    LocalHttpServer server;

private slots:
    void initTestCase()
    {
        for (const char* name : {"one", "two", "three"})
            server.setPage(QStringLiteral("/%1.html").arg(name),
                           titled(QByteArray("Page ") + name));
        server.setPage("/links.html",
                       "<html><head><title>Links</title></head><body style='margin:0'>"
                       "<a href='/two.html' style='position:absolute;left:20px;top:20px;"
                       "font-size:40px'>PAGE TWO</a>"
                       "<a href='/one.html'><img src='/picture.png' width=80 height=80 "
                       "style='position:absolute;left:20px;top:120px'></a></body></html>");
        server.setResponse(
            "/picture.png",
            LocalHttpServer::Response(
                QByteArray::fromBase64(
                    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mP8z8BQ"
                    "DwAEhQGAhKmMIQAAAABJRU5ErkJggg=="),
                "image/png"));
        // The store is the user's, kept between runs of this test.
        for (const char* suffix : {"", "-wal", "-shm"})
            QFile::remove(HistoryStore::userPath() + suffix);
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void visitsOfEveryTabFillTheTreeByDayAndSite()
    {
        EngineApp app;
        QVERIFY(app.startAt(server.url("/one.html"), "Page one"));
        MainWindow& w = *app.window;
        TabStrip& tabs = w.parts().tabs;
        tabs.newTab(server.url("/two.html"), true);
        // Another name of the same machine is another site.
        tabs.newTab(QString(server.url("/three.html")).replace("127.0.0.1", "localhost"), false);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(tabs.view(2), "Page two"), 20000);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(tabs.view(3), "Page three"), 20000);

        w.parts().commands.dispatch(w.parts().bar.tool(key::mainBar, key::historySwitch));
        HistoryTree& tree = w.parts().history.tree();
        QTRY_VERIFY(!tree.refreshing() && tree.rowCount() == 1);
        const QString today = QLocale().toString(QDate::currentDate(), QLocale::ShortFormat);
        const QString port = QString::number(server.serverPort());
        const QModelIndex local = tree.find("Domain" + today + "127.0.0.1:" + port);
        const QModelIndex named = tree.find("Domain" + today + "localhost:" + port);
        QCOMPARE(tree.rowCount(local), 2);
        QCOMPARE(tree.index(0, 0, local).data().toString(), "Page one");
        QCOMPARE(tree.index(1, 0, local).data().toString(), "Page two");
        QCOMPARE(tree.index(0, 0, named).data().toString(), "Page three");

        // The panel is in the side bar; a click on an address opens it anew.
        HistoryPanel& panel = w.parts().history.panel();
        QTRY_VERIFY(panel.isVisible());
        panel.view()->expandAll();
        const QRect row = panel.view()->visualRect(tree.index(1, 0, local));
        QTest::mouseClick(panel.view()->viewport(), Qt::LeftButton, {}, row.center());
        QTRY_COMPARE(w.parts().state.tabCount, 4);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(tabs.view(4), "Page two"), 20000);

        // The address box finds it by title, from the history of this run.
        w.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        w.parts().addressBox->setFocus();
        w.parts().addressBox->setEditText(QString());
        QTest::keyClicks(w.parts().addressBox, "page thr");
        QTRY_COMPARE(
            w.parts().addressCompleter.suggestions(),
            QStringList({QString(server.url("/three.html")).replace("127.0.0.1", "localhost")}));
        QTRY_VERIFY(w.parts().addressCompleter.popup()->isVisible());
    }

    void linksDraggedOutOfThePageOpenInNewTabs()
    {
        EngineApp app;
        platform::WebEngineBrowserView* view = app.startAt(server.url("/links.html"), "Links");
        QVERIFY(view);
        MainWindow& w = *app.window;
        w.activateWindow();
        QWidget* surface = view->engineView()->focusProxy();
        QTRY_VERIFY(surface && surface->isVisible());
        QVERIFY(drawn(view));
        const QPoint link = surface->mapToGlobal(QPoint(60, 40));
        const QPoint picture = surface->mapToGlobal(QPoint(60, 160));
        const QPoint inPage = surface->mapToGlobal(QPoint(400, 400));
        const QPoint statusBar = w.mapToGlobal(QPoint(w.width() / 2, w.height() - 4));

        // Within the page: nothing opens (else the picture below would not be
        // the third tab).
        dragWithPointer(link, {inPage, inPage + QPoint(5, 5)});
        // Out of the page: the link opens in a new tab.
        dragWithPointer(link, {inPage, statusBar});
        QTRY_COMPARE(w.parts().state.tabCount, 2);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(2), "Page two"), 20000);
        // A picture in a link opens the picture's own address.
        w.parts().tabs.activateTab(1);
        dragWithPointer(picture, {inPage, statusBar});
        QTRY_COMPARE(w.parts().state.tabCount, 3);
        QCOMPARE(w.parts().tabs.view(3)->locationUrl(), server.url("/picture.png"));
        // The page icon dropped on the address box opens its address there;
        // the next link dragged out of the page still opens.
        w.parts().tabs.activateTab(1);
        QVERIFY(drawn(view));
        const QPoint box = w.parts().addressBox->mapToGlobal(w.parts().addressBox->rect().center());
        auto* icon = w.findChild<QWidget*>(QStringLiteral("pic_ieicon"));
        QVERIFY(icon);
        QSignalSpy reloaded(view, &platform::BrowserView::documentComplete);
        dragWithPointer(icon->mapToGlobal(icon->rect().center()), {box});
        QTRY_VERIFY_WITH_TIMEOUT(!reloaded.isEmpty(), 20000);
        QVERIFY(drawn(view));
        dragWithPointer(link, {inPage, statusBar});
        QTRY_COMPARE(w.parts().state.tabCount, 4);
        // A link on the address box: the current tab goes there, no tab
        // opens, and nothing dropped is kept as a typed address.
        w.parts().tabs.activateTab(1);
        QVERIFY(drawn(view));
        platform::forgetTypedUrls(platform::UserRegistry());
        dragWithPointer(link, {inPage, box});
        // The drop is handled before the page it names starts to load, so
        // any tab it opened would be counted by now.
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(1), "Page two"), 20000);
        QCOMPARE(w.parts().state.tabCount, 4);
        QCOMPARE(platform::UserRegistry().readValue(platform::typedUrlsKey, "url1"), QString());
    }
};

QUB_TEST_MAIN(HistoryEngineTest)
#include "tst_history.moc"
