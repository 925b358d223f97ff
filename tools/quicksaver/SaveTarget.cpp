#include "SaveTarget.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QUrl>

namespace quicksaver {

namespace {

QString cleaned(const QString& text)
{
    QString name;
    for (QChar c : text.simplified())
        if (c.category() != QChar::Other_Control && !QStringLiteral("/\\:*?\"<>|").contains(c))
            name += c;
    name = name.simplified();
    while (name.startsWith(QLatin1Char('.')) || name.startsWith(QLatin1Char(' ')))
        name.remove(0, 1);
    qsizetype length = qMin<qsizetype>(name.size(), 100);
    const auto fits = [&] {
        return !name.at(length - 1).isHighSurrogate() && name.left(length).toUtf8().size() <= 200;
    };
    while (length > 0 && !fits())
        --length;
    name.truncate(length);
    while (name.endsWith(QLatin1Char('.')) || name.endsWith(QLatin1Char(' ')))
        name.chop(1);
    return name;
}

} // namespace

QString safeFileName(const QString& title, const QUrl& address)
{
    for (const QString& name : {cleaned(title), cleaned(address.host())})
        if (!name.isEmpty())
            return name;
    return QStringLiteral("Saved page");
}

QString saveUnique(const QString& folder, const QString& name, const QByteArray& content,
                   QString* error)
{
    QString path;
    for (int n = 1;; ++n) {
        path = folder + QLatin1Char('/') + name +
               (n > 1 ? QStringLiteral(" (%1)").arg(n) : QString()) + QLatin1String(".html");
        QFile reservation(path);
        if (reservation.open(QIODevice::WriteOnly | QIODevice::NewOnly))
            break;
        const QFileInfo taken(path);
        if ((!taken.exists() && !taken.isSymLink()) || n == 10000) {
            *error = QStringLiteral("cannot create %1: %2").arg(path, reservation.errorString());
            return {};
        }
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit())
        return path;
    *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
    QFile::remove(path); // only the empty reservation: the content never got there
    return {};
}

} // namespace quicksaver
