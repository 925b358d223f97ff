#pragma once
// Closes every modal dialog that a command opens, as the user would, and
// keeps the titles of those it closed.
#include <QApplication>
#include <QStringList>
#include <QTimer>
#include <QWidget>

class DialogCloser
{
public:
    DialogCloser()
    {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            if (QWidget* dialog = QApplication::activeModalWidget()) {
                closed << dialog->windowTitle();
                dialog->close();
            }
        });
        timer_.start(200);
    }

    QStringList closed;

private:
    QTimer timer_;
};
