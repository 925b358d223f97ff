#pragma once
// What the program asks of the desktop: open an address with the program the
// desktop chose for it (a mailto: text opens a new mail message), or start its
// address book. DesktopShell asks the desktop; tests record the calls instead.
#include <QString>

namespace platform {

class Shell
{
public:
    virtual ~Shell() = default;
    // False when the desktop has no program for it.
    virtual bool open(const QString& address) = 0;
    // False when no address book program is installed.
    virtual bool openAddressBook() = 0;
};

class DesktopShell : public Shell
{
public:
    bool open(const QString& address) override;
    bool openAddressBook() override;
};

} // namespace platform
