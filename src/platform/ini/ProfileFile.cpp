#include "ProfileFile.h"
#include "../NarrowText.h"

#include <QFile>
#include <QSaveFile>
#include <QStringList>
#include <optional>

namespace platform {

namespace {

QStringList readLines(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString text = QString::fromUtf8(file.readAll());
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QStringList lines = text.split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

std::optional<QString> sectionName(const QString& line)
{
    const QString trimmed = line.trimmed();
    if (!trimmed.startsWith(QLatin1Char('[')))
        return std::nullopt;
    const qsizetype close = trimmed.indexOf(QLatin1Char(']'));
    if (close < 0)
        return std::nullopt;
    return trimmed.mid(1, close - 1).trimmed();
}

bool sameName(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

// Key and value of a "key=value" line; nothing for comments and other lines.
std::optional<std::pair<QString, QString>> entry(const QString& line)
{
    const qsizetype eq = line.indexOf(QLatin1Char('='));
    if (eq < 0 || line.trimmed().startsWith(QLatin1Char(';')))
        return std::nullopt;
    return std::make_pair(line.left(eq).trimmed(), line.mid(eq + 1).trimmed());
}

QString unquoted(const QString& value)
{
    if (value.size() >= 2) {
        const QChar first = value.front();
        if ((first == QLatin1Char('"') || first == QLatin1Char('\'')) && value.back() == first)
            return value.mid(1, value.size() - 2);
    }
    return value;
}

std::optional<QString> lookup(const QString& path, const QString& section, const QString& key)
{
    bool inSection = false;
    for (const QString& line : readLines(path)) {
        if (auto name = sectionName(line)) {
            inSection = sameName(*name, section);
            continue;
        }
        if (!inSection)
            continue;
        if (auto kv = entry(line); kv && sameName(kv->first, key))
            return unquoted(kv->second);
    }
    return std::nullopt;
}

} // namespace

QString ProfileFile::readString(const QString& section, const QString& key,
                                const QString& fallback) const
{
    return lookup(path_, section, key).value_or(fallback);
}

int ProfileFile::readInt(const QString& section, const QString& key, int fallback) const
{
    const std::optional<QString> value = lookup(path_, section, key);
    if (!value)
        return fallback;
    int result = 0;
    for (QChar c : *value) {
        if (!c.isDigit() || c.unicode() > 0x7F)
            break;
        result = result * 10 + c.digitValue();
        if (result > 100000000)
            break;
    }
    return result;
}

bool ProfileFile::writeString(const QString& section, const QString& key,
                              const QString& value) const
{
    QStringList lines = readLines(path_);
    const QString newLine = key + QLatin1Char('=') + value;
    qsizetype sectionStart = -1;
    qsizetype insertAt = -1;
    bool written = false;
    for (qsizetype i = 0; i < lines.size() && !written; ++i) {
        if (auto name = sectionName(lines[i])) {
            if (sectionStart >= 0)
                break;
            if (sameName(*name, section)) {
                sectionStart = i;
                insertAt = i + 1;
            }
            continue;
        }
        if (sectionStart < 0)
            continue;
        if (auto kv = entry(lines[i]); kv && sameName(kv->first, key)) {
            lines[i] = newLine;
            written = true;
        } else if (!lines[i].trimmed().isEmpty()) {
            insertAt = i + 1;
        }
    }
    if (!written) {
        if (sectionStart < 0) {
            lines.append(QLatin1Char('[') + section + QLatin1Char(']'));
            lines.append(newLine);
        } else {
            lines.insert(insertAt, newLine);
        }
    }
    QSaveFile file(path_);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write((lines.join(QLatin1String("\r\n")) + QLatin1String("\r\n")).toUtf8());
    return file.commit();
}

QString ReadIniString(const QString& file, const QString& section, const QString& key)
{
    return narrowLeft(ProfileFile(file).readString(section, key), 254);
}

} // namespace platform
