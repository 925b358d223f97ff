#pragma once
// What the program asks of the desktop: open an address with the program the
// desktop chose for it (a mailto: text opens a new mail message), start its
// address book, start a program, show a file's properties, or play a sound.
// DesktopShell asks the desktop; tests record the calls instead.
#include <QHash>
#include <QIcon>
#include <QString>
#include <QStringList>
#include <memory>

class QSoundEffect;

namespace platform {

class Shell
{
public:
    virtual ~Shell() = default;
    // False when the desktop has no program for it.
    virtual bool open(const QString& address) = 0;
    // False when no address book program is installed.
    virtual bool openAddressBook() = 0;
    // Starts a program without waiting for it, with variables added to this
    // program's environment; false when it cannot start.
    virtual bool start(const QString& program, const QStringList& arguments,
                       const QHash<QString, QString>& added) = 0;
    // The file manager's properties of a file; false when none answers.
    virtual bool showProperties(const QString& path) = 0;
    // Plays a sound file without waiting; nothing happens without a file or
    // an audio device.
    virtual void playSound(const QString& path) = 0;
    // The desktop's icon for a file or folder; a null icon when it has none.
    virtual QIcon fileIcon(const QString& path) = 0;
    // The name of the program the desktop starts for an address of scheme
    // ("ssh"); empty when it has none.
    virtual QString handlerName(const QString& scheme) = 0;
};

class DesktopShell : public Shell
{
public:
    DesktopShell();
    ~DesktopShell() override;
    bool open(const QString& address) override;
    bool openAddressBook() override;
    bool start(const QString& program, const QStringList& arguments,
               const QHash<QString, QString>& added) override;
    bool showProperties(const QString& path) override;
    void playSound(const QString& path) override;
    QIcon fileIcon(const QString& path) override;
    QString handlerName(const QString& scheme) override;

private:
    // Made at the first sound, so a program that never plays one never
    // starts the audio system.
    std::unique_ptr<QSoundEffect> sound_;
};

class Dialogs;
// The properties of a file: the file manager's, else the program's own
// details; "cannot open property page" for a file that is not there.
void showFileProperties(const QString& path, Shell& shell, Dialogs& dialogs);

} // namespace platform
