#pragma once
// What every fuzz target shares: a scratch folder of its own for the run, and
// an input cut into the pieces a target needs.
#include <QByteArray>
#include <QFile>
#include <QList>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <cstdint>
#include <cstdlib>

namespace fuzz {

inline QString scratchFile(const char* name)
{
    static QTemporaryDir dir;
    return dir.filePath(QString::fromLatin1(name));
}

inline void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        abort();
    file.write(bytes);
}

inline QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The first `count - 1` lines of the input as fields, the rest as one body.
inline QList<QByteArray> split(const uint8_t* data, size_t size, int count)
{
    QByteArray rest(reinterpret_cast<const char*>(data), qsizetype(size));
    QList<QByteArray> parts;
    while (parts.size() < count - 1) {
        const qsizetype end = rest.indexOf('\n');
        parts << (end < 0 ? rest : rest.left(end));
        rest = end < 0 ? QByteArray() : rest.mid(end + 1);
    }
    parts << rest;
    return parts;
}

// Whether text written into a file of these bytes reads back as it was: a file
// that is not UTF-8 is read as Latin-1, which holds less.
inline bool holds(const QByteArray& file, const QStringList& texts)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = utf8.decode(file);
    if (!utf8.hasError())
        return true;
    for (const QString& text : texts)
        for (QChar c : text)
            if (c.unicode() > 0xFF)
                return false;
    return true;
}

} // namespace fuzz
