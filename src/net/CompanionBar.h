#pragma once
// The companion bar: a small floating tool window of the program's own with a
// search box whose results open in a new tab, the proxy list editor, and a
// close button. It speaks to the browser only through the channel it is
// given: "QUB_open" + address, "QUB_proxychange", "QUB_close".
#include "ProxyListEditor.h"

#include <QPointer>
#include <QWidget>

class CompanionChannel;
class QLineEdit;

class CompanionBar : public QWidget
{
    Q_OBJECT
public:
    // searchTemplate: an address with "{query}" for the words.
    CompanionBar(CompanionChannel& channel, QString proxyListPath, QString searchTemplate,
                 ProxyListEditor::Captions captions, platform::Dialogs& dialogs, QWidget* owner);

    // The browser asks the companion to close: no "close" is sent back.
    void gameover();
    void search();
    ProxyListEditor* editProxies();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    CompanionChannel& channel_;
    QString proxyListPath_;
    QString searchTemplate_;
    ProxyListEditor::Captions captions_;
    platform::Dialogs& dialogs_;
    QLineEdit* query_;
    bool quiet_ = false;
};
