#pragma once
// The windows the popup blocker stopped and the pages of closed tabs: the last
// ten as entries of the "Blocked Windows" menu, so each can be opened again.
// A blocked window's entry is numbered by the running count that the status
// tool "b_blocked" shows after its ":" (the only copy of the count); a closed
// page is listed by its title and does not count as blocked. Entries keep
// their captions; when the list is full the oldest goes and the others move
// up a place, names and addresses with them. Kept in memory for one run.
// "Reopen Closed Tab" opens the closed pages again, the latest first, each
// once, however many entries have slid out of the menu since.
#include <QString>
#include <QStringList>

class CommandDispatcher;
class Tabs;

namespace commandbar {
class CommandBar;
} // namespace commandbar

class BlockedList
{
public:
    static constexpr int capacity = 10;

    BlockedList(commandbar::CommandBar& bar, Tabs& tabs, CommandDispatcher& commands);

    void record(const QString& shortText, const QString& address);
    void recordClosed(const QString& shortTitle, const QString& address);
    // The address of entry n (1 for the oldest); empty when there is none.
    QString address(int entry) const { return addresses_.value(entry - 1); }
    int count() const;
    void setCount(int count);

private:
    void add(const QString& caption, const QString& address);

    commandbar::CommandBar& bar_;
    QStringList addresses_;
    // The closed pages not yet reopened by the command, the latest last.
    QStringList closed_;
};
