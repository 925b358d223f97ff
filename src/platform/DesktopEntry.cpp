#include "DesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

namespace platform {

namespace {

QStringList commandOf(const QString& exec)
{
    QStringList words;
    for (const QString& word : QProcess::splitCommand(exec)) {
        // A field code stands for files or addresses the program is not given.
        if (word.size() == 2 && word.startsWith(u'%'))
            continue;
        QString plain = word;
        words << plain.replace(QStringLiteral("%%"), QStringLiteral("%"));
    }
    return words;
}

} // namespace

DesktopEntry DesktopEntry::parse(const QString& text)
{
    DesktopEntry entry;
    bool inEntry = false;
    for (const QString& raw : text.split(u'\n')) {
        const QString line = raw.trimmed();
        if (line.startsWith(u'[')) {
            inEntry = line == QLatin1String("[Desktop Entry]");
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (!inEntry || line.startsWith(u'#') || equals <= 0)
            continue;
        const QString key = line.left(equals).trimmed();
        const QString value = line.mid(equals + 1).trimmed();
        if (key == QLatin1String("Name"))
            entry.name = value;
        else if (key == QLatin1String("Categories"))
            entry.categories = value.split(u';', Qt::SkipEmptyParts);
        else if (key == QLatin1String("Exec"))
            entry.command = commandOf(value);
        else if (key == QLatin1String("NoDisplay") || key == QLatin1String("Hidden"))
            entry.hidden = entry.hidden || value == QLatin1String("true");
    }
    return entry;
}

DesktopEntry DesktopEntry::load(const QString& path)
{
    QFile source(path);
    if (source.size() > qint64(1024) * 1024 || !source.open(QIODevice::ReadOnly))
        return {};
    return parse(QString::fromUtf8(source.readAll()));
}

DesktopEntry installedApplication(const QString& category)
{
    for (const QString& folder :
         QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        for (const QFileInfo& file :
             QDir(folder).entryInfoList({QStringLiteral("*.desktop")}, QDir::Files, QDir::Name)) {
            DesktopEntry entry = DesktopEntry::load(file.filePath());
            if (!entry.hidden && !entry.command.isEmpty() && entry.categories.contains(category))
                return entry;
        }
    }
    return {};
}

} // namespace platform
