#pragma once
// The little the program reads of a desktop's application entry (a
// ".desktop" file): its name, categories and command line, from the
// "[Desktop Entry]" group only.
#include <QString>
#include <QStringList>

namespace platform {

struct DesktopEntry
{
    QString name;
    QStringList categories;
    // The program and its arguments, with the entry's field codes (%u, %F...)
    // taken out: started with no file or address.
    QStringList command;
    bool hidden = false;

    static DesktopEntry parse(const QString& text);
    // The entry of a file; an empty entry when it cannot be read or is huge.
    static DesktopEntry load(const QString& path);
};

// The first application installed on this desktop in the category (as
// "ContactManagement"), or an entry with no command when there is none.
DesktopEntry installedApplication(const QString& category);

} // namespace platform
