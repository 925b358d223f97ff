// The profile-string reader and writer on any file, and on its text saved as
// UTF-16: read, write, read again.
// No crash; what was written reads back; every line the write does not own
// stays byte for byte, in its place.
#include "FuzzSupport.h"
#include "platform/ini/ProfileFile.h"

#include <QStringDecoder>
#include <QStringEncoder>

namespace {

// True when the key's line can be written and read back as it was given:
// a line break or NUL is written as a space, so it cannot.
bool plain(const QString& section, const QString& key, const QString& value)
{
    for (const QString& s : {section, key, value})
        if (s.contains('\n') || s.contains('\r') || s.contains(QChar(0)) || s != s.trimmed() ||
            s.startsWith(QChar(0xFEFF)))
            return false;
    if (section.contains(']') || key.isEmpty() || key.contains('=') || key.startsWith(';') ||
        key.startsWith('['))
        return false;
    return !(value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
             value.back() == value.front());
}

QList<QByteArray> linesOf(const QByteArray& bytes)
{
    QList<QByteArray> lines = bytes.split('\n');
    if (bytes.endsWith('\n'))
        lines.removeLast();
    return lines;
}

// The lines of a file as bytes to compare: a UTF-16 file's as UTF-8.
QByteArray lineBytes(const QByteArray& file)
{
    if (file.startsWith("\xFF\xFE"))
        return QString(QStringDecoder(QStringDecoder::Utf16LE).decode(file)).toUtf8();
    if (file.startsWith("\xFE\xFF"))
        return QString(QStringDecoder(QStringDecoder::Utf16BE).decode(file)).toUtf8();
    return file;
}

// After is before with at most one line replaced, or a line inserted, or two
// lines (a section and its key) added: every other line stays as it was.
bool keptAround(const QByteArray& before, const QByteArray& after)
{
    const QList<QByteArray> old = linesOf(before);
    const QList<QByteArray> now = linesOf(after);
    qsizetype prefix = 0;
    while (prefix < old.size() && prefix < now.size() && old[prefix] == now[prefix])
        ++prefix;
    qsizetype suffix = 0;
    while (suffix < old.size() - prefix && suffix < now.size() - prefix &&
           old[old.size() - 1 - suffix] == now[now.size() - 1 - suffix])
        ++suffix;
    return old.size() - prefix - suffix <= 1 && now.size() - prefix - suffix <= 2;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QList<QByteArray> parts = fuzz::split(data, size, 4);
    const QString section = QString::fromUtf8(parts[0]);
    const QString key = QString::fromUtf8(parts[1]);
    const QString value = QString::fromUtf8(parts[2]);
    const QString path = fuzz::scratchFile("profile.ini");
    fuzz::writeFile(path, parts[3]);

    const platform::ProfileFile file(path);
    file.readString(section, key);
    file.readInt(section, key, 7);
    platform::ReadIniString(path, section, key);
    if (!file.writeString(section, key, value))
        abort();
    const QByteArray written = fuzz::readFile(path);
    if (!keptAround(lineBytes(parts[3]), lineBytes(written)))
        abort();
    if (plain(section, key, value) && fuzz::holds(parts[3], {section, key, value}) &&
        file.readString(section, key, "?") != value)
        abort();

    // The same text saved as UTF-16, of an order the input picks: the write
    // keeps the encoding and every other line.
    const bool little = size % 2 == 0;
    const QByteArray mark = little ? QByteArray("\xFF\xFE") : QByteArray("\xFE\xFF");
    const QString text = QString::fromUtf8(parts[3]);
    fuzz::writeFile(path, mark + QByteArray(QStringEncoder(little ? QStringEncoder::Utf16LE
                                                                  : QStringEncoder::Utf16BE)
                                                .encode(text)));
    file.readString(section, key);
    if (!file.writeString(section, key, value))
        abort();
    const QByteArray wide = fuzz::readFile(path);
    if (!wide.startsWith(mark))
        abort();
    const QString back =
        QStringDecoder(little ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE).decode(wide);
    if (!keptAround(text.toUtf8(), lineBytes(wide)))
        abort();
    if (plain(section, key, value) && file.readString(section, key, "?") != value)
        abort();
    return 0;
}
