#pragma once
// The address bar: the editable combo cbo_Input. Enter sends its text to the
// current tab, Ctrl+Enter to a new tab, choosing an entry of its open list
// sends that entry; keys and the wheel on the closed list only show one. Its list is "About:Blank"
// and the typed addresses; it writes nothing back itself (addressSent lets the platform record the
// address). The data of list item 0 tells whether the box has the keyboard focus.
#include <QObject>

class QComboBox;
class QCompleter;
class TabStrip;

namespace platform {
class UserRegistry;
}

class AddressBar : public QObject
{
    Q_OBJECT
public:
    AddressBar(QComboBox& box, TabStrip& tabs);

    // Leading blanks are taken off the first four characters only, and only
    // when the text is longer than four.
    static QString narrowTrim(const QString& text);

    // Appends "url0" (when present), then "url1", "url2"... up to the first
    // missing one.
    void loadTypedUrls(const platform::UserRegistry& registry);
    // Suggestions offered as the user types; Enter while they show sends the
    // box's text (the highlighted one, if any) as Enter always does.
    void setCompleter(QCompleter& completer);
    void navigateFromAddressBar(bool newTab);
    bool focusFlag() const;

signals:
    // Text sent to a tab from the box.
    void addressSent(const QString& address);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setFocusFlag(int value);
    void showEntry(int index);

    QComboBox& box_;
    TabStrip& tabs_;
    QObject* suggestions_ = nullptr;
};
