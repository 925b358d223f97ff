#pragma once
// Quick save and the text view, which both hand a page over through a file in
// the program's "SavedFiles" folder. Quick save writes the page's markup to
// "QuickSave.dat" and starts the quick saver beside the program, which makes
// a page of it there, fetching the page's pictures and styles through the
// program's own proxy (so the user's proxy choice and Work Offline hold); the text view writes the
// page's text to "temp.dat", shows it in a text window and deletes the file at once.
#include "core/MainState.h"

#include <QString>

class CommandDispatcher;
class QWidget;

namespace platform {
class BrowserView;
class BrowserViewFactory;
class Dialogs;
class Shell;
} // namespace platform

class QuickSave
{
public:
    QuickSave(QWidget& window, const MainState& state, platform::Dialogs& dialogs,
              platform::Shell& shell, platform::BrowserViewFactory& engine,
              CommandDispatcher& commands);

    // The saver's environment variable naming the proxy it fetches through.
    static constexpr const char* proxyVariable = "QUB_SAVER_PROXY";

    QString savedFilesFolder() const { return state_.folder.own(QStringLiteral("SavedFiles/")); }
    void save(platform::BrowserView& view);
    void showText(platform::BrowserView& view);

private:
    // Writes one record and its line break; false when the file cannot be written.
    bool writeRecord(const QString& name, const QString& record) const;

    QWidget& window_;
    const MainState& state_;
    platform::Dialogs& dialogs_;
    platform::Shell& shell_;
    platform::BrowserViewFactory& engine_;
};
