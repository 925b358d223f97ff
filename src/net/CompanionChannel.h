#pragma once
// The one-string mailbox through which the companion bar speaks to the
// browser: it writes a command, the browser acts on every change and empties
// the box when it has acted. Commands begin with "QUB_": "close",
// "proxychange", "iconleft", "iconright", and "open" directly followed by an
// address. Changes are reported in the main window's thread.
#include <QObject>
#include <QString>

class CompanionChannel : public QObject
{
    Q_OBJECT
public:
    const QString& text() const { return text_; }
    void setText(const QString& text);

signals:
    void changed();

private:
    QString text_;
};
