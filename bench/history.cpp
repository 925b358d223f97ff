// The history at scale: 100,000 addresses over 90 days and 2,000 sites.
// Prints "tree <ms>" per round (the store read, sorted and put into the side
// panel's tree until it is filled) and "complete <ms> <text>" per completion
// query, the address box's question as the user types.
#include "history/CURLHistory.h"
#include "history/HistoryStore.h"
#include "history/HistoryTree.h"
#include "platform/Dialogs.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTreeView>
#include <cstdio>

namespace {

constexpr int entries = 100000;
constexpr int sites = 2000;
constexpr int days = 90;

double millis(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 7;
    QTemporaryDir dir;
    HistoryStore store(dir.filePath(QStringLiteral("History.sqlite")));
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const qint64 span = qint64(days) * 24 * 3600 * 1000;
    QRandomGenerator random(42);
    for (int n = 0; n < entries; ++n) {
        const int site = n % sites;
        store.addUrl(QStringLiteral("https://www.site%1.example/page/%2").arg(site).arg(n),
                     QStringLiteral("Page %1 of site %2").arg(n).arg(site), 0,
                     now - qint64(random.bounded(double(span))));
    }
    store.flush();

    platform::QtDialogs dialogs;
    CURLHistory history(store, dialogs);
    HistoryTree tree;
    QTreeView view;
    view.setUniformRowHeights(true);
    view.setModel(&tree);
    view.resize(300, 700);
    view.show();
    QCoreApplication::processEvents();
    for (int round = 0; round < rounds; ++round) {
        QSignalSpy filled(&tree, &HistoryTree::filled);
        QElapsedTimer timer;
        timer.start();
        tree.refresh(history);
        while (filled.isEmpty())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        std::printf("tree %.1f\n", millis(timer));
    }
    std::printf("days %d\n", tree.rowCount());

    // A site's start, a word of titles, and a text nothing holds (the
    // longest search there is).
    for (int round = 0; round < rounds; ++round)
        for (const char* typed : {"site17", "page 4242", "nowhere-at-all"}) {
            QElapsedTimer timer;
            timer.start();
            const QStringList found = store.complete(QString::fromLatin1(typed), 30);
            std::printf("complete %.1f %s %lld\n", millis(timer), typed,
                        static_cast<long long>(found.size()));
        }
    return 0;
}
