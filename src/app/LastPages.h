#pragma once
// The pages open at the last exit: "LastPages.ini" beside the program, one
// address per line in strip order, written at shut-down and read back and
// deleted at the next start. Lines are written whole but read back as
// comma-separated fields, so an address with a comma comes back as two.
#include <QString>
#include <QStringList>

class TabStrip;

class LastPages
{
public:
    explicit LastPages(QString appDir) : appDir_(std::move(appDir)) {}

    QString fileName() const { return appDir_ + QStringLiteral("LastPages.ini"); }

    // Appends one line; false when the file could not be written.
    bool append(const QString& address) const;
    // Opens every saved page: the first in tab 1 while that tab has no
    // address, the rest in new active tabs. Then deletes the file.
    void restore(TabStrip& tabs) const;

    // The entries of the file's text as a delimited-field reader sees them:
    // a field ends at a comma or a line end, blanks around it and a pair of
    // quotes are dropped; empty fields are skipped.
    static QStringList entries(const QString& text);

private:
    QString appDir_;
};
