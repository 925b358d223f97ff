#pragma once
// The windows the popup blocker stopped: the last ten as entries of the
// "Blocked Windows" menu, numbered by the running count that the status tool
// "b_blocked" shows after its ":" (the only copy of the count). Entries keep
// their captions; when the list is full the oldest goes and the others move
// up a place, names and addresses with them. Kept in memory for one run.
#include <QString>
#include <QStringList>

class CommandDispatcher;
class TabStrip;

namespace platform {
class CommandBar;
}

class BlockedList
{
public:
    static constexpr int capacity = 10;
    static constexpr int firstId = 2801;

    BlockedList(platform::CommandBar& bar, TabStrip& tabs, CommandDispatcher& commands);

    void record(const QString& shortText, const QString& address);
    // The address of entry n (1 for the oldest); empty when there is none.
    QString address(int entry) const { return addresses_.value(entry - 1); }
    int count() const;
    void setCount(int count);

private:
    platform::CommandBar& bar_;
    QStringList addresses_;
};
