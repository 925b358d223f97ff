#include "HistoryStore.h"
#include "platform/PrivateFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <QVariant>

namespace {

constexpr int schemaVersion = 1;
constexpr qint64 dayMillis = qint64(24) * 3600 * 1000;

const char* const schema[] = {
    "CREATE TABLE IF NOT EXISTS urls ("
    " url TEXT PRIMARY KEY NOT NULL, title TEXT NOT NULL DEFAULT '',"
    " site TEXT NOT NULL, last_visited INTEGER NOT NULL, last_updated INTEGER NOT NULL,"
    " expires INTEGER NOT NULL, flags INTEGER NOT NULL DEFAULT 0)",
    "CREATE INDEX IF NOT EXISTS urls_site ON urls(site)",
    "CREATE INDEX IF NOT EXISTS urls_visited ON urls(last_visited)",
    // Every three letters of the addresses and titles, so text anywhere in
    // them is found without reading them all.
    "CREATE VIRTUAL TABLE IF NOT EXISTS urls_text USING fts5(url, title, content='urls',"
    " content_rowid='rowid', tokenize='trigram')",
    "CREATE TRIGGER IF NOT EXISTS urls_added AFTER INSERT ON urls BEGIN"
    " INSERT INTO urls_text(rowid, url, title) VALUES (new.rowid, new.url, new.title); END",
    "CREATE TRIGGER IF NOT EXISTS urls_removed AFTER DELETE ON urls BEGIN"
    " INSERT INTO urls_text(urls_text, rowid, url, title)"
    " VALUES ('delete', old.rowid, old.url, old.title); END",
    "CREATE TRIGGER IF NOT EXISTS urls_changed AFTER UPDATE OF url, title ON urls BEGIN"
    " INSERT INTO urls_text(urls_text, rowid, url, title)"
    " VALUES ('delete', old.rowid, old.url, old.title);"
    " INSERT INTO urls_text(rowid, url, title) VALUES (new.rowid, new.url, new.title); END",
};
// The most recent addresses are searched by reading them; beyond them, text
// of three letters or more is looked up in the index of letters.
constexpr int recentlyRead = 2000;

// What typed text is matched against from its start: the address without
// its scheme and "www.", in lower case.
QString siteOf(const QString& url)
{
    QString site = url.toLower();
    const qsizetype scheme = site.indexOf(QLatin1String("://"));
    if (scheme >= 0)
        site.remove(0, scheme + 3);
    if (site.startsWith(QLatin1String("www.")))
        site.remove(0, 4);
    return site;
}

bool exec(QSqlDatabase& db, const QString& statement)
{
    QSqlQuery query(db);
    return query.exec(statement);
}

// Up to limit addresses for typed text: those whose site begins with it
// first, then those whose address or title holds it, most recent first.
QStringList completeFrom(QSqlDatabase& db, const QString& text, int limit)
{
    QStringList found;
    const QString typed = siteOf(text.trimmed());
    if (typed.isEmpty() || limit <= 0)
        return found;
    auto collect = [&](const QString& statement, const QVariantList& values) {
        QSqlQuery query(db);
        query.setForwardOnly(true);
        query.prepare(statement);
        for (const QVariant& value : values)
            query.addBindValue(value);
        query.addBindValue(limit);
        if (query.exec())
            while (query.next() && found.size() < limit)
                if (const QString url = query.value(0).toString(); !found.contains(url))
                    found << url;
    };
    // The site range uses its index; then the text anywhere, most recent first.
    collect(QStringLiteral("SELECT url FROM urls WHERE site >= ? AND site < ?"
                           " ORDER BY last_visited DESC LIMIT ?"),
            {typed, QString(typed + QChar(0xFFFF))});
    const QString words = text.trimmed().toLower();
    if (found.size() < limit)
        collect(QStringLiteral("SELECT url FROM (SELECT url, title FROM urls"
                               " ORDER BY last_visited DESC LIMIT %1)"
                               " WHERE instr(lower(url), ?) OR instr(lower(title), ?) LIMIT ?")
                    .arg(recentlyRead),
                {typed, words});
    if (found.size() < limit && words.size() >= 3)
        collect(QStringLiteral("SELECT urls.url FROM urls_text JOIN urls ON urls.rowid ="
                               " urls_text.rowid WHERE urls_text MATCH ?"
                               " ORDER BY urls.last_visited DESC LIMIT ?"),
                {QString(QLatin1Char(u'"') + QString(words).replace(u'"', QLatin1String("\"\"")) +
                         QLatin1Char('"'))});
    return found;
}

std::atomic<int> connections{0};

} // namespace

// Owns the writing connection, in the store's thread: requests pile up and
// go into the file together, in one transaction, once the queue is empty.
class HistoryWriter : public QObject
{
public:
    HistoryWriter(QString path, QString connection)
        : path_(std::move(path)), connection_(std::move(connection))
    {
    }
    ~HistoryWriter() override
    {
        commit();
        {
            QSqlDatabase db = QSqlDatabase::database(connection_, false);
            db.close();
        }
        QSqlDatabase::removeDatabase(connection_);
    }

    void request(QString statement, QVariantList values)
    {
        pending_.push_back({std::move(statement), std::move(values)});
        if (!scheduled_) {
            scheduled_ = true;
            QTimer::singleShot(0, this, [this] { commit(); });
        }
    }

    // Every record gone, and nothing of them left to read in the file: the
    // index of letters emptied with them, deleted pages overwritten (secure
    // delete), and the log copied into the file and cut to nothing.
    void erase()
    {
        request(QStringLiteral("DELETE FROM urls"), {});
        request(QStringLiteral("INSERT INTO urls_text(urls_text) VALUES ('delete-all')"), {});
        commit();
        QSqlDatabase db = database();
        exec(db, QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    }

    void commit()
    {
        scheduled_ = false;
        if (pending_.empty())
            return;
        QSqlDatabase db = database();
        db.transaction();
        for (const auto& [statement, values] : std::exchange(pending_, {})) {
            QSqlQuery query(db);
            query.prepare(statement);
            for (const QVariant& value : values)
                query.addBindValue(value);
            query.exec();
        }
        db.commit();
    }

    QStringList complete(const QString& text, int limit)
    {
        QSqlDatabase db = database();
        return completeFrom(db, text, limit);
    }

private:
    QSqlDatabase database()
    {
        if (!QSqlDatabase::contains(connection_)) {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection_);
            db.setDatabaseName(path_);
            db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
            db.open();
            exec(db, QStringLiteral("PRAGMA synchronous=NORMAL"));
            exec(db, QStringLiteral("PRAGMA secure_delete=ON"));
        }
        return QSqlDatabase::database(connection_);
    }

    struct Request
    {
        QString statement;
        QVariantList values;
    };
    QString path_;
    QString connection_;
    std::vector<Request> pending_;
    bool scheduled_ = false;
};

HistoryStore::HistoryStore(const QString& path, QObject* parent)
    : QObject(parent), connection_(QStringLiteral("history-%1").arg(++connections))
{
    platform::makePrivateFolder(QFileInfo(path).path());
    if (!openFile(path)) {
        // Not a store we can read: kept aside for the user, a new one begun.
        const QString stem =
            path + QStringLiteral(".bad-") +
            QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-hhmmss"));
        QString aside = stem;
        // Never over an earlier one: each may hold what the user wants back.
        for (int n = 2; QFile::exists(aside); ++n)
            aside = stem + QStringLiteral("-%1").arg(n);
        QSqlDatabase::removeDatabase(connection_);
        const bool moved = QFile::rename(path, aside);
        for (const char* suffix : {"-wal", "-shm"})
            QFile::remove(path + QLatin1String(suffix));
        if (moved && openFile(path))
            problem_ = QStringLiteral("The history in %1 could not be read. It was moved to %2, "
                                      "and a new history begins.")
                           .arg(path, aside);
        else
            problem_ = QStringLiteral("The history in %1 cannot be opened. Pages visited now "
                                      "are not kept.")
                           .arg(path);
    }
    if (!open_)
        return;
    // Its write-ahead log takes the same mode when the engine makes it.
    platform::makePrivate(path);
    thread_ = std::make_unique<QThread>();
    thread_->setObjectName(QStringLiteral("history writer"));
    writer_ = new HistoryWriter(path, connection_ + QStringLiteral("-writer"));
    writer_->moveToThread(thread_.get());
    connect(thread_.get(), &QThread::finished, writer_, &QObject::deleteLater);
    thread_->start();
}

HistoryStore::~HistoryStore()
{
    flush();
    if (thread_) {
        thread_->quit();
        thread_->wait();
    }
    {
        QSqlDatabase db = QSqlDatabase::database(connection_, false);
        db.close();
    }
    QSqlDatabase::removeDatabase(connection_);
}

QString HistoryStore::userPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/QUB-BROWSER/History.sqlite");
}

bool HistoryStore::openFile(const QString& path)
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection_);
    db.setDatabaseName(path);
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
    if (!db.open())
        return false;
    QSqlQuery check(db);
    if (!check.exec(QStringLiteral("PRAGMA quick_check(1)")) || !check.next() ||
        check.value(0).toString() != QLatin1String("ok"))
        return (db.close(), false);
    check.finish();
    QSqlQuery version(db);
    if (!version.exec(QStringLiteral("PRAGMA user_version")) || !version.next())
        return (db.close(), false);
    const int found = version.value(0).toInt();
    version.finish();
    // A store of a later program is not ours to change.
    if (found > schemaVersion)
        return (db.close(), false);
    if (!exec(db, QStringLiteral("PRAGMA journal_mode=WAL")))
        return (db.close(), false);
    for (const char* statement : schema)
        if (!exec(db, QString::fromLatin1(statement)))
            return (db.close(), false);
    exec(db, QStringLiteral("PRAGMA user_version=%1").arg(schemaVersion));
    open_ = true;
    return true;
}

void HistoryStore::addUrl(const QString& url, const QString& title, quint32 flags, qint64 visitedAt)
{
    if (!writer_ || url.isEmpty() || url.size() > maxUrlLength ||
        url.startsWith(QLatin1String("data:")) || url.startsWith(QLatin1String("blob:")))
        return;
    const qint64 now = visitedAt ? visitedAt : QDateTime::currentMSecsSinceEpoch();
    const qint64 expires = now + keptDays_ * dayMillis;
    // A later visit without a title keeps the title the page had.
    QMetaObject::invokeMethod(writer_, [w = writer_, url, title = title.left(maxTitleLength), flags,
                                        now, expires, rows = rowLimit_] {
        w->request(
            QStringLiteral(
                "INSERT INTO urls (url, title, site, last_visited, last_updated, expires,"
                " flags) VALUES (?, COALESCE(?, ''), ?, ?, ?, ?, ?) ON CONFLICT(url) DO UPDATE SET"
                " title = CASE WHEN excluded.title = '' THEN title ELSE excluded.title END,"
                " last_visited = excluded.last_visited, last_updated ="
                " excluded.last_updated, expires = excluded.expires, flags = excluded.flags"),
            {url, title, siteOf(url), now, now, expires, flags});
        w->request(QStringLiteral("DELETE FROM urls WHERE rowid IN (SELECT rowid FROM urls"
                                  " ORDER BY last_visited LIMIT max(0, (SELECT count(*) FROM"
                                  " urls) - ?))"),
                   {rows});
    });
}

void HistoryStore::deleteUrl(const QString& url)
{
    if (writer_)
        QMetaObject::invokeMethod(writer_, [w = writer_, url] {
            w->request(QStringLiteral("DELETE FROM urls WHERE url = ?"), {url});
        });
}

void HistoryStore::clear()
{
    if (writer_)
        QMetaObject::invokeMethod(writer_, [w = writer_] { w->erase(); });
}

void HistoryStore::expire(int days)
{
    keptDays_ = days;
    const qint64 cutoff = QDateTime::currentMSecsSinceEpoch() - days * dayMillis;
    if (writer_)
        QMetaObject::invokeMethod(writer_, [w = writer_, cutoff] {
            w->request(QStringLiteral("DELETE FROM urls WHERE last_visited < ?"), {cutoff});
        });
}

void HistoryStore::flush() const
{
    if (writer_)
        QMetaObject::invokeMethod(
            writer_, [w = writer_] { w->commit(); }, Qt::BlockingQueuedConnection);
}

std::vector<HistoryRecord> HistoryStore::records(const QString& filter) const
{
    std::vector<HistoryRecord> found;
    if (!open_)
        return found;
    flush();
    QSqlQuery query(QSqlDatabase::database(connection_));
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT url, title, last_visited, last_updated, expires, flags"
                                 " FROM urls WHERE substr(url, 1, ?) = COALESCE(?, '')"));
    query.addBindValue(filter.size());
    query.addBindValue(filter);
    if (!query.exec())
        return found;
    while (query.next())
        found.push_back({query.value(0).toString(), query.value(1).toString(),
                         query.value(2).toLongLong(), query.value(3).toLongLong(),
                         query.value(4).toLongLong(), query.value(5).toUInt()});
    return found;
}

QStringList HistoryStore::complete(const QString& text, int limit) const
{
    if (!open_)
        return {};
    flush();
    QSqlDatabase db = QSqlDatabase::database(connection_);
    return completeFrom(db, text, limit);
}

void HistoryStore::requestCompletion(const QString& text, int limit)
{
    if (!writer_)
        return;
    const quint64 request = ++latestRequest_;
    QMetaObject::invokeMethod(writer_, [this, w = writer_, request, text, limit] {
        if (latestRequest_ != request)
            return;
        w->commit();
        const QStringList urls = w->complete(text, limit);
        if (latestRequest_ == request)
            QMetaObject::invokeMethod(this, [this, text, urls] { emit completed(text, urls); });
    });
}
