// Records visits into a history store with the program's own code until it
// is killed: "http://visit-n.example/" for n from 1, one a millisecond, as
// fast as tabs could open them.
#include "history/HistoryStore.h"

#include <QCoreApplication>
#include <QThread>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (app.arguments().size() != 2)
        return 2;
    HistoryStore store(app.arguments()[1]);
    if (!store.isOpen())
        return 1;
    for (int n = 1;; ++n) {
        store.addUrl(QStringLiteral("http://visit-%1.example/").arg(n),
                     QStringLiteral("Visit %1").arg(n));
        QThread::msleep(1);
    }
}
