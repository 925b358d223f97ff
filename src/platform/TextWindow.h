#pragma once
// The program's own plain-text window: a page's text to read, select, copy
// and save elsewhere, or one of the program's text files to edit. It goes when closed, or with its
// parent window.
#include <QWidget>

class QPlainTextEdit;

namespace platform {

class Dialogs;

class TextWindow : public QWidget
{
    Q_OBJECT
public:
    TextWindow(const QString& title, const QString& text, Dialogs& dialogs, QWidget* parent);

    // The file at path, to edit and save in place; a missing file starts empty.
    static TextWindow* editFile(const QString& path, Dialogs& dialogs, QWidget* parent);

    QString text() const;
    // Writes the edited file, whole or not at all; false when it failed.
    bool save();
    // Asks where to and writes the text there; false when cancelled or failed.
    bool saveAs();

signals:
    // The edited file was written in place.
    void saved();

private:
    bool write(const QString& path);

    Dialogs& dialogs_;
    QPlainTextEdit* editor_;
    QString file_;
};

} // namespace platform
