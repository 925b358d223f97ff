#pragma once
// What the program asks of the desktop: open an address with the program the
// desktop chose for it (a mailto: text opens a new mail message), or start its
// address book, or start a program. DesktopShell asks the desktop; tests record the calls instead.
#include <QString>
#include <QStringList>

namespace platform {

class Shell
{
public:
    virtual ~Shell() = default;
    // False when the desktop has no program for it.
    virtual bool open(const QString& address) = 0;
    // False when no address book program is installed.
    virtual bool openAddressBook() = 0;
    // Starts a program without waiting for it; false when it cannot start.
    virtual bool start(const QString& program, const QStringList& arguments) = 0;
};

class DesktopShell : public Shell
{
public:
    bool open(const QString& address) override;
    bool openAddressBook() override;
    bool start(const QString& program, const QStringList& arguments) override;
};

} // namespace platform
