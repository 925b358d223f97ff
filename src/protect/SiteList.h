#pragma once
// A list of sites kept in a file of the user's: the addresses it was given,
// one a line, read on first use and written whole and atomically at each
// change. A listed host holds its subdomains.
#include "platform/ProgramFolder.h"

#include <QSet>
#include <QString>
#include <QUrl>

class SiteList
{
public:
    // folder is read when the list is first used: it is set after start-up.
    SiteList(const platform::ProgramFolder& folder, QString name)
        : folder_(folder), name_(std::move(name))
    {
    }
    SiteList(platform::ProgramFolder&&, QString) = delete;

    QString fileName() const { return folder_.own(name_); }
    // False when the address has no host or the file could not be written.
    bool add(const QString& address);
    // Takes out every entry that lists url's host; false when the file could
    // not be written.
    bool remove(const QUrl& url);
    bool lists(const QUrl& url) const;

private:
    void load() const;
    bool write(const QStringList& addresses);

    const platform::ProgramFolder& folder_;
    QString name_;
    mutable bool loaded_ = false;
    mutable QStringList addresses_;
    mutable QSet<QString> hosts_;
};
