#pragma once
// The sites whose pages are killed while "Kill Popups by Address" is on: the
// hosts of the addresses that "Add Page to Block List" was given, one address
// a line in the user's "BlockList.txt", read on first use and written
// whole and atomically at each addition. A listed host kills its subdomains.
#include "platform/ProgramFolder.h"

#include <QSet>
#include <QString>
#include <QUrl>

class KillList
{
public:
    // folder is read when the list is first used: it is set after start-up.
    explicit KillList(const platform::ProgramFolder& folder) : folder_(folder) {}
    explicit KillList(platform::ProgramFolder&&) = delete;

    QString fileName() const { return folder_.own(QStringLiteral("BlockList.txt")); }
    // False when the address has no host or the file could not be written.
    bool add(const QString& address);
    bool lists(const QUrl& url) const;

private:
    void load() const;

    const platform::ProgramFolder& folder_;
    mutable bool loaded_ = false;
    mutable QStringList addresses_;
    mutable QSet<QString> hosts_;
};
