// The profile-string reader and writer on any file: read, write, read again.
// No crash; what was written reads back; every line the write does not own
// stays byte for byte, in its place.
#include "FuzzSupport.h"
#include "platform/ini/ProfileFile.h"

namespace {

// True when the key's line can be written and read back as it was given.
bool plain(const QString& section, const QString& key, const QString& value)
{
    for (const QString& s : {section, key, value})
        if (s.contains('\n') || s.contains('\r') || s != s.trimmed() || s.startsWith(QChar(0xFEFF)))
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
    if (!keptAround(parts[3], written))
        abort();
    if (plain(section, key, value) && fuzz::holds(parts[3], {section, key, value}) &&
        file.readString(section, key, "?") != value)
        abort();
    return 0;
}
