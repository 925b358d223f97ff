#pragma once
// The companion bar: a small floating tool window of the program's own with a
// search box whose results open in a new tab, the proxy list editor, and a
// close button. It speaks to the browser only through the channel it is
// given: "QUB_open" + address, "QUB_proxychange", "QUB_close".
#include <QPointer>
#include <QWidget>

#include <functional>

class CompanionChannel;
class QLineEdit;
namespace platform {
class TextWindow;
}

namespace platform {
class Dialogs;
} // namespace platform

class CompanionBar : public QWidget
{
    Q_OBJECT
public:
    // A caption of the language in force by key, or the fallback.
    using Captions = std::function<QString(const QString& key, const QString& fallback)>;

    // searchTemplate: an address with "{query}" for the words.
    CompanionBar(CompanionChannel& channel, QString proxyListPath, QString searchTemplate,
                 Captions captions, platform::Dialogs& dialogs, QWidget* owner);

    // The browser asks the companion to close: no "close" is sent back.
    void gameover();
    void search();
    platform::TextWindow* editProxies();
    // The proxy list in the program's text window; a save tells the browser
    // through the channel that the list changed.
    static platform::TextWindow* editProxyList(const QString& path, platform::Dialogs& dialogs,
                                               CompanionChannel& channel, QWidget* parent);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    CompanionChannel& channel_;
    QString proxyListPath_;
    QString searchTemplate_;
    Captions captions_;
    platform::Dialogs& dialogs_;
    QLineEdit* query_;
    bool quiet_ = false;
};
