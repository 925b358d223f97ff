#pragma once
// Reads and writes ini files the way the old profile-string functions did:
// section and key names match case-insensitively, blanks around keys and
// values are dropped, one pair of surrounding quotes is removed from a value,
// and a write changes only its own line, keeping every other line, comment
// and unknown key as it was. A file saved as UTF-16 with a byte-order mark is
// read as such and written back in it. Writes are atomic.
#include <QHash>
#include <QList>
#include <QString>
#include <utility>

namespace platform {

class ProfileFile
{
public:
    explicit ProfileFile(QString path) : path_(std::move(path)) {}

    const QString& path() const { return path_; }

    // The value, or fallback when the file, section or key is missing.
    QString readString(const QString& section, const QString& key,
                       const QString& fallback = {}) const;
    // Leading decimal digits of the value; 0 for a value that holds none or is
    // negative, fallback when the key is missing.
    int readInt(const QString& section, const QString& key, int fallback) const;
    // Every key of a section from one reading of the file, for callers that
    // look up hundreds: values as readString gives them, keyed by the key
    // case-folded.
    QHash<QString, QString> readSection(const QString& section) const;
    // False when the file could not be written; the old file is then intact.
    bool writeString(const QString& section, const QString& key, const QString& value) const;
    // Several keys of one section in one atomic write: a reader, or a crash,
    // sees all of them changed or none.
    using Entries = QList<std::pair<QString, QString>>;
    bool writeStrings(const QString& section, const Entries& entries) const;

private:
    QString path_;
};

// The system's shared reader: empty for anything missing, at most 254 narrow
// characters (a value is never cut inside a two-byte character).
QString ReadIniString(const QString& file, const QString& section, const QString& key);

// ReadIniString over many keys of one section, reading the file once.
class IniSectionReader
{
public:
    IniSectionReader(const QString& file, const QString& section)
        : values_(ProfileFile(file).readSection(section))
    {
    }
    QString text(const QString& key) const;

private:
    QHash<QString, QString> values_;
};

} // namespace platform
