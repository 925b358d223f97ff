#pragma once
// The session file and its backups in one folder: "Session.json" holds the
// latest version, "Session.1.json" to "Session.3.json" three earlier ones,
// newest first: the last of the previous run, and then one at most every
// backupEvery, so a minute of changes cannot push a crashed session out.
// Every file is written whole or not at all, and the session file is never
// missing once written, so a kill at any moment leaves the latest or the one
// before.
#include "SessionState.h"

#include <QElapsedTimer>
#include <QString>
#include <chrono>

class SessionFiles
{
public:
    static constexpr int backups = 3;
    // Longer files are not sessions.
    static constexpr qint64 maxSize = qint64{16} * 1024 * 1024;

    explicit SessionFiles(QString folder,
                          std::chrono::milliseconds backupEvery = std::chrono::minutes(1))
        : folder_(std::move(folder)), backupEvery_(backupEvery)
    {
    }

    // 0 is the session file, 1 to backups the backups.
    QString fileName(int version) const;
    std::optional<SessionState> read(int version) const;
    // Writes text as the session file. The one it replaces becomes backup 1,
    // each backup moving one place on, at the first write and then once
    // backupEvery has passed since the last such move.
    bool write(const QByteArray& text);

private:
    QByteArray readText(int version) const;

    QString folder_;
    std::chrono::milliseconds backupEvery_;
    QElapsedTimer sinceBackup_;
    // What the session file holds, once read or written.
    std::optional<QByteArray> latest_;
};
