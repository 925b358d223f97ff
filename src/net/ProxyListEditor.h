#pragma once
// The proxy list as text, one proxy per line, with a line on how to write
// one; Save writes the file whole and reports it, Cancel leaves it.
#include <QDialog>

#include <functional>

class QPlainTextEdit;

namespace platform {
class Dialogs;
}

class ProxyListEditor : public QDialog
{
    Q_OBJECT
public:
    using Captions = std::function<QString(const QString& key, const QString& fallback)>;

    ProxyListEditor(QString path, const Captions& captions, platform::Dialogs& dialogs,
                    QWidget* parent);

signals:
    void saved();

private:
    void save();

    QString path_;
    platform::Dialogs& dialogs_;
    QPlainTextEdit* text_;
};
