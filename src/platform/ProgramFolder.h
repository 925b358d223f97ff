#pragma once
// Where the program's files are. It ships some (the skin, the language files,
// Translist.txt, block.wav, res/) and writes others (settings, last pages,
// session, saved pages, edited lists). Installed, the shipped files are in a
// read-only folder and the written ones in a folder of the user's own; a copy
// of a shipped file in the user's folder is read instead of it, so a user
// changes the skin or a language by editing a copy, and an upgrade changes
// every shipped file the user did not copy. Run from its build folder, or
// with QUB_APPDIR, the program has one folder for both.
#include <QString>
#include <QStringList>

namespace platform {

class ProgramFolder
{
public:
    // One folder for both, as a build folder is. Every path ends in "/".
    explicit ProgramFolder(const QString& folder = {});
    ProgramFolder(const QString& shipped, const QString& own, const QString& helpers);

    // Of this run: QUB_APPDIR, else the executable's folder when the skin is
    // beside it, else the installed layout around the executable with the
    // user's folder under the XDG data folder.
    static ProgramFolder ofThisProgram();

    // The user's copy of name (a file or a folder) when there is one, else
    // the shipped one.
    QString read(const QString& name) const;
    // Where the program writes name: always in the user's folder.
    QString own(const QString& name = {}) const { return own_ + name; }
    const QString& shipped() const { return shipped_; }
    // The file names matching filters in either folder, each once, sorted.
    QStringList names(const QStringList& filters) const;
    // A program shipped with this one, such as the quick saver.
    QString helper(const QString& name) const { return helpers_ + name; }
    // Makes the user's folder, readable by the user alone, when it is missing.
    bool makeOwn() const;

private:
    QString shipped_;
    QString own_;
    QString helpers_;
};

} // namespace platform
