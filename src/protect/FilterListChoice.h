#pragma once
// The filter lists to choose from: every ".txt" file in the user's "Filters"
// folder, then the system's copies of EasyList and EasyPrivacy. Each is on
// unless the user switched it off; the switched-off ones are kept in the
// user's "FilterListsOff.txt", one path a line, written whole and atomically.
#include "platform/ProgramFolder.h"

#include <QList>
#include <QStringList>

class FilterListChoice
{
public:
    // folder is read when the choice is first used: it is set after start-up.
    explicit FilterListChoice(const platform::ProgramFolder& folder) : folder_(folder) {}
    explicit FilterListChoice(platform::ProgramFolder&&) = delete;

    // Where the user's own lists are read from.
    QString ownFolder() const { return folder_.own(QStringLiteral("Filters")); }
    QStringList all() const;
    QStringList on() const;
    // Each of all() with whether it is on, as all() gave them; false when
    // the choice could not be written.
    bool choose(const QStringList& lists, const QList<bool>& on);
    QList<bool> onOf(const QStringList& lists) const;

private:
    QString offFile() const { return folder_.own(QStringLiteral("FilterListsOff.txt")); }
    void load() const;

    const platform::ProgramFolder& folder_;
    mutable bool loaded_ = false;
    mutable QStringList off_;
};
