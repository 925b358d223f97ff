#pragma once
// What a tab shows in place of its page when the page cannot be shown: a
// crashed page, a certificate the engine does not trust. A heading, an
// explanation and up to two buttons.
#include <QWidget>

class QLabel;
class QPushButton;

namespace platform {

class PageNotice : public QWidget
{
    Q_OBJECT
public:
    explicit PageNotice(QWidget* parent = nullptr);

    // An empty caption hides that button.
    void set(const QString& heading, const QString& text, const QString& primary,
             const QString& secondary = {});
    QString heading() const;

signals:
    void primaryClicked();
    void secondaryClicked();

private:
    QLabel* heading_;
    QLabel* text_;
    QPushButton* primary_;
    QPushButton* secondary_;
};

} // namespace platform
