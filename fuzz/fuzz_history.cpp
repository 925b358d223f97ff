// The history store reading a file of any content, or a store whose one
// record holds any bytes in any of its fields: never a crash, the store
// always open afterwards (the file kept aside when unreadable), and the tree
// holding at most what the store listed.
#include "FuzzSupport.h"
#include "history/CURLHistory.h"
#include "history/HistoryStore.h"
#include "history/HistoryTree.h"
#include "support/Fakes.h"

#include <QCoreApplication>
#include <QDir>
#include <QSqlDatabase>
#include <QSqlQuery>

namespace {

// A store of the right shape with one record whose fields are the input's.
void writeRecord(const QString& path, const QList<QByteArray>& fields)
{
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), "fuzz");
        db.setDatabaseName(path);
        if (!db.open())
            abort();
        QSqlQuery query(db);
        query.exec(QStringLiteral(
            "CREATE TABLE urls (url TEXT PRIMARY KEY NOT NULL, title TEXT NOT NULL DEFAULT '',"
            " site TEXT NOT NULL, last_visited INTEGER NOT NULL, last_updated INTEGER NOT NULL,"
            " expires INTEGER NOT NULL, flags INTEGER NOT NULL DEFAULT 0)"));
        query.prepare(QStringLiteral("INSERT INTO urls VALUES (?, ?, ?, ?, ?, ?, ?)"));
        for (const QByteArray& field : fields)
            query.addBindValue(field);
        query.exec();
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("fuzz"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static int argc = 1;
    static char name[] = "fuzz_history";
    static char* argv[] = {name, nullptr};
    static QCoreApplication app(argc, argv);
    if (size == 0)
        return 0;
    const QString path = fuzz::scratchFile("History/History.sqlite");
    QDir folder(path.left(path.lastIndexOf('/')));
    folder.removeRecursively();
    folder.mkpath(QStringLiteral("."));
    const QByteArray rest(reinterpret_cast<const char*>(data) + 1, qsizetype(size - 1));
    if (data[0] & 1)
        writeRecord(path, fuzz::split(reinterpret_cast<const uint8_t*>(rest.data()),
                                      size_t(rest.size()), 7));
    else
        fuzz::writeFile(path, rest);

    HistoryStore store(path);
    if (!store.isOpen())
        abort();
    const size_t listed = store.records(QStringLiteral("http")).size();
    store.complete(QStringLiteral("a"), 5);
    ScriptedDialogs dialogs;
    CURLHistory history(store, dialogs);
    HistoryTree tree;
    tree.refresh(history);
    while (tree.refreshing())
        QCoreApplication::processEvents();
    int links = 0;
    for (int day = 0; day < tree.rowCount(); ++day)
        for (int site = 0; site < tree.rowCount(tree.index(day, 0)); ++site)
            links += tree.rowCount(tree.index(site, 0, tree.index(day, 0)));
    if (size_t(links) > listed || !dialogs.asked.isEmpty())
        abort();
    return 0;
}
