#include "TextWindow.h"
#include "platform/Dialogs.h"
#include "platform/NarrowText.h"

#include <QDir>
#include <QFile>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QShortcut>
#include <QStandardPaths>
#include <QVBoxLayout>

namespace platform {

TextWindow::TextWindow(const QString& title, const QString& text, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent, Qt::Window), dialogs_(dialogs), editor_(new QPlainTextEdit(text, this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(title);
    editor_->setReadOnly(true);
    editor_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    auto* save = new QPushButton(QStringLiteral("Save As..."), this);
    connect(save, &QPushButton::clicked, this, &TextWindow::saveAs);
    auto* close = new QShortcut(QKeySequence::Close, this);
    connect(close, &QShortcut::activated, this, &QWidget::close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(editor_);
    layout->addWidget(save, 0, Qt::AlignRight);
    resize(720, 560);
}

QString TextWindow::text() const
{
    return editor_->toPlainText();
}

bool TextWindow::saveAs()
{
    const QString suggested = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
                              u'/' + QString(windowTitle()).replace(u'/', u'_') +
                              QStringLiteral(".txt");
    const QString path = dialogs_.saveFileName(QStringLiteral("Save Text As"), suggested);
    return !path.isEmpty() && write(path);
}

TextWindow* TextWindow::editFile(const QString& path, Dialogs& dialogs, QWidget* parent)
{
    QFile file(path);
    const QString text =
        file.open(QIODevice::ReadOnly) ? platform::decodeText(file.readAll()) : QString();
    auto* window = new TextWindow(QDir::toNativeSeparators(path), text, dialogs, parent);
    window->file_ = path;
    window->editor_->setReadOnly(false);
    window->editor_->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto* save = window->findChild<QPushButton*>();
    save->setText(QStringLiteral("Save"));
    save->disconnect();
    connect(save, &QPushButton::clicked, window, &TextWindow::save);
    auto* shortcut = new QShortcut(QKeySequence::Save, window);
    connect(shortcut, &QShortcut::activated, window, &TextWindow::save);
    return window;
}

bool TextWindow::save()
{
    if (file_.isEmpty() || !write(file_))
        return false;
    emit saved();
    return true;
}

bool TextWindow::write(const QString& path)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(text().toUtf8()) >= 0 && file.commit())
        return true;
    dialogs_.message(
        QStringLiteral("The text could not be saved to %1.").arg(QDir::toNativeSeparators(path)),
        Dialogs::Buttons::Ok, Dialogs::Icon::Warning);
    return false;
}

} // namespace platform
