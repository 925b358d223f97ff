#pragma once
// The pages open at the last exit: "LastPages.ini" beside the program, one
// address per line in strip order, written at shut-down and read back and
// deleted at the next start. Lines are written whole but read back as
// comma-separated fields, so an address with a comma comes back as two.
// A page names its own address, commas included, so at most maxPages come
// back, and the file is gone before the first of them opens.
#include <QString>
#include <QStringList>

class TabStrip;

class LastPages
{
public:
    explicit LastPages(QString appDir) : appDir_(std::move(appDir)) {}

    static constexpr int maxPages = 100;

    QString fileName() const { return appDir_ + QStringLiteral("LastPages.ini"); }

    // Appends one line, to an owner-only file; false when the file could not
    // be written or is a link.
    bool append(const QString& address) const;
    // Deletes the file, then opens its first maxPages pages: the first in
    // tab 1 while that tab has no address, the rest in new tabs. The last is
    // shown and loads; the others load when first shown.
    void restore(TabStrip& tabs) const;

    // The entries of the file's text as a delimited-field reader sees them:
    // a field ends at a comma or a line end, blanks around it and a pair of
    // quotes are dropped; empty fields are skipped.
    static QStringList entries(const QString& text);

private:
    QString appDir_;
};
