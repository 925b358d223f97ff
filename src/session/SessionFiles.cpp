#include "SessionFiles.h"
#include "platform/PrivateFiles.h"

#include <QFile>
#include <QSaveFile>

namespace {

bool writeWhole(const QString& name, const QByteArray& text)
{
    QSaveFile file(name);
    return platform::openPrivate(file, QIODevice::WriteOnly) && file.write(text) == text.size() &&
           file.commit();
}

} // namespace

QString SessionFiles::fileName(int version) const
{
    return folder_ + (version == 0 ? QStringLiteral("Session.json")
                                   : QStringLiteral("Session.%1.json").arg(version));
}

QByteArray SessionFiles::readText(int version) const
{
    QFile file(fileName(version));
    if (!file.open(QIODevice::ReadOnly) || file.size() > maxSize)
        return {};
    return file.readAll();
}

std::optional<SessionState> SessionFiles::read(int version) const
{
    return readSession(readText(version));
}

bool SessionFiles::write(const QByteArray& text)
{
    if (!latest_)
        latest_ = readText(0);
    const bool due = !sinceBackup_.isValid() ||
                     std::chrono::milliseconds(sinceBackup_.elapsed()) >= backupEvery_;
    if (due)
        sinceBackup_.start();
    if (due && !latest_->isEmpty() && *latest_ != text) {
        QFile::remove(fileName(backups));
        for (int version = backups - 1; version >= 1; --version)
            QFile::rename(fileName(version), fileName(version + 1));
        writeWhole(fileName(1), *latest_);
    }
    if (!writeWhole(fileName(0), text))
        return false;
    latest_ = text;
    return true;
}
