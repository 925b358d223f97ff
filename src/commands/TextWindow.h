#pragma once
// The program's own plain-text window: a page's text to read, select, copy
// and save elsewhere. It goes when closed, or with its parent window.
#include <QWidget>

class QPlainTextEdit;

namespace platform {
class Dialogs;
}

class TextWindow : public QWidget
{
    Q_OBJECT
public:
    TextWindow(const QString& title, const QString& text, platform::Dialogs& dialogs,
               QWidget* parent);

    QString text() const;
    // Asks where to and writes the text there; false when cancelled or failed.
    bool saveAs();

private:
    platform::Dialogs& dialogs_;
    QPlainTextEdit* editor_;
};
