#pragma once
// A page a view stands for before it has loaded it, as a restored tab does:
// its address and title are the view's until the view's widget is first
// shown on screen, and then the page is loaded. A widget parked out of sight
// gets no show event, so a hundred restored tabs cost one page, not a hundred.
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>

namespace platform {

class LoadWhenShown : public QObject
{
public:
    using Load = std::function<void(const QString& address)>;

    LoadWhenShown(QWidget& widget, Load load);

    // Waits for the first show; loads at once when the widget is on screen.
    // Returns whether it waits.
    bool wait(const QString& address, const QString& title);
    // Loads now what waits, if anything.
    void loadNow();
    // The view went somewhere else meanwhile: nothing waits any more.
    void cancel() { waiting_ = false; }

    bool waiting() const { return waiting_; }
    const QString& address() const { return address_; }
    // The page's last known title, or its address when none was known.
    const QString& title() const { return title_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The window may delete the widget before the view.
    QPointer<QWidget> widget_;
    Load load_;
    bool waiting_ = false;
    QString address_;
    QString title_;
};

} // namespace platform
