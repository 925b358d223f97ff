#include "ProfileFile.h"
#include "../NarrowText.h"
#include "../PrivateFiles.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>
#include <QStringEncoder>
#include <QStringList>
#include <optional>

namespace platform {

namespace {

// A file as lines: the bytes of each line as they were (so a write leaves the
// lines it does not own untouched, whatever their encoding) and their text.
// A file that begins with a UTF-16 byte-order mark is UTF-16 of that order,
// as the platform's own profile functions read it, and is written back so;
// any other is UTF-8 when the whole file is valid UTF-8, else Latin-1.
struct Lines
{
    enum class Encoding { Utf8, Latin1, Utf16LE, Utf16BE };

    bool readable = true;
    Encoding encoding = Encoding::Utf8;
    // A UTF-16 file's byte-order mark; a UTF-8 one stays in the first line.
    QByteArray mark;
    bool crlf = true;
    QList<QByteArray> raw;
    QStringList text;

    QByteArray bytesOf(const QString& text) const
    {
        switch (encoding) {
        case Encoding::Utf8:
            return text.toUtf8();
        case Encoding::Latin1:
            return text.toLatin1();
        case Encoding::Utf16LE:
            return QStringEncoder(QStringEncoder::Utf16LE).encode(text);
        case Encoding::Utf16BE:
            return QStringEncoder(QStringEncoder::Utf16BE).encode(text);
        }
        return {};
    }
    QString decode(QByteArray line) const
    {
        if (line.endsWith('\r'))
            line.chop(1);
        return encoding == Encoding::Utf8 ? QString::fromUtf8(line) : QString::fromLatin1(line);
    }
    QByteArray encode(const QString& line) const
    {
        return bytesOf(crlf ? line + QLatin1Char('\r') : line);
    }
    QByteArray joined() const
    {
        const QByteArray newline = bytesOf(QStringLiteral("\n"));
        return mark + raw.join(newline) + newline;
    }
};

void readWide(Lines& lines, const QByteArray& bytes)
{
    lines.mark = bytes.left(2);
    lines.encoding =
        bytes.startsWith("\xFF\xFE") ? Lines::Encoding::Utf16LE : Lines::Encoding::Utf16BE;
    QStringDecoder decoder(lines.encoding == Lines::Encoding::Utf16LE ? QStringDecoder::Utf16LE
                                                                      : QStringDecoder::Utf16BE);
    // The decoder drops the mark at the start, and only that one.
    QString all = decoder.decode(bytes);
    lines.crlf = all.isEmpty() || all.contains(QLatin1String("\r\n"));
    if (all.endsWith(QLatin1Char('\n')))
        all.chop(1);
    if (all.isEmpty())
        return;
    for (QString line : all.split(QLatin1Char('\n'))) {
        lines.raw.append(lines.bytesOf(line));
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        lines.text.append(line);
    }
}

Lines readLines(const QString& path)
{
    Lines lines;
    QFile file(path);
    if (!file.exists())
        return lines;
    if (!file.open(QIODevice::ReadOnly)) {
        lines.readable = false;
        return lines;
    }
    QByteArray bytes = file.readAll();
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
        readWide(lines, bytes);
        return lines;
    }
    QStringDecoder check(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    // The decoder decodes only when its result is taken; stateless, so that a
    // sequence cut off at the end counts as an error.
    static_cast<void>(QString(check.decode(bytes)));
    lines.encoding = check.hasError() ? Lines::Encoding::Latin1 : Lines::Encoding::Utf8;
    if (!bytes.isEmpty() && !bytes.contains("\r\n"))
        lines.crlf = false;
    if (bytes.endsWith('\n'))
        bytes.chop(1);
    if (bytes.isEmpty())
        return lines;
    lines.raw = bytes.split('\n');
    for (const QByteArray& line : lines.raw)
        lines.text.append(lines.decode(line));
    if (lines.encoding == Lines::Encoding::Utf8 && !lines.text.isEmpty() &&
        lines.text.first().startsWith(QChar(0xFEFF)))
        lines.text.first().remove(0, 1);
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
    for (const QString& line : readLines(path).text) {
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

// Replaces the key's line in the section, or adds it after the section's last
// entry, or adds the section at the end.
// A line break in a value written would start an entry of the writer's
// choosing (a dropped text becoming typed addresses).
QString oneLine(QString text)
{
    for (const QChar c : {u'\r', u'\n', u'\0'})
        text.replace(c, u' ');
    return text;
}

void setEntry(Lines& lines, const QString& rawSection, const QString& rawKey, const QString& value)
{
    const QString section = oneLine(rawSection);
    const QString key = oneLine(rawKey);
    const QString newLine = key + QLatin1Char('=') + oneLine(value);
    qsizetype sectionStart = -1;
    qsizetype insertAt = -1;
    for (qsizetype i = 0; i < lines.text.size(); ++i) {
        if (auto name = sectionName(lines.text[i])) {
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
        if (auto kv = entry(lines.text[i]); kv && sameName(kv->first, key)) {
            lines.raw[i] = lines.encode(newLine);
            lines.text[i] = newLine;
            return;
        }
        if (!lines.text[i].trimmed().isEmpty())
            insertAt = i + 1;
    }
    if (sectionStart < 0) {
        const QString header = QLatin1Char('[') + section + QLatin1Char(']');
        lines.raw << lines.encode(header) << lines.encode(newLine);
        lines.text << header << newLine;
    } else {
        lines.raw.insert(insertAt, lines.encode(newLine));
        lines.text.insert(insertAt, newLine);
    }
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

QHash<QString, QString> ProfileFile::readSection(const QString& section) const
{
    QHash<QString, QString> values;
    bool inSection = false;
    for (const QString& line : readLines(path_).text) {
        if (auto name = sectionName(line)) {
            inSection = sameName(*name, section);
            continue;
        }
        // The first line of a key counts, as in a lookup of that key alone.
        if (auto kv = entry(line); inSection && kv)
            if (const QString name = kv->first.toCaseFolded(); !values.contains(name))
                values.insert(name, unquoted(kv->second));
    }
    return values;
}

bool ProfileFile::writeString(const QString& section, const QString& key,
                              const QString& value) const
{
    return writeStrings(section, {{key, value}});
}

bool ProfileFile::writeStrings(const QString& section, const Entries& entries) const
{
    Lines lines = readLines(path_);
    if (!lines.readable)
        return false;
    for (const auto& [key, value] : entries)
        setEntry(lines, section, key, value);
    QSaveFile file(path_);
    // Settings hold proxy passwords, and the user's own ini the addresses typed.
    if (!openPrivate(file, QIODevice::WriteOnly))
        return false;
    file.write(lines.joined());
    return file.commit();
}

QString ReadIniString(const QString& file, const QString& section, const QString& key)
{
    return narrowLeft(ProfileFile(file).readString(section, key), 254);
}

QString IniSectionReader::text(const QString& key) const
{
    return narrowLeft(values_.value(key.toCaseFolded()), 254);
}

} // namespace platform
