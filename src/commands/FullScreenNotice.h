#pragma once
// Said over a page that took the whole screen, for a few seconds: which site
// did and how to leave. Without it, a page drawing the browser's own bars
// could pass for them.
#include <QObject>
#include <QTimer>

class QLabel;
class QWidget;

class FullScreenNotice : public QObject
{
    Q_OBJECT
public:
    static constexpr int shownMs = 4000;

    explicit FullScreenNotice(QWidget& window);

    // site: the host of the page, or its address when it has none.
    void show(const QString& site);
    void hide();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Top centre of the page area, as the window is now.
    void place();

    QWidget& window_;
    QLabel* label_;
    QTimer timer_;
};
