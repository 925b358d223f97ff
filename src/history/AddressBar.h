#pragma once
// The address bar: the editable combo cbo_Input. Enter sends its text to the
// current tab, Ctrl+Enter to a new tab, choosing an entry of its open list
// sends that entry; keys and the wheel on the closed list only show one. Its list is "About:Blank"
// and the typed addresses; it writes nothing back itself (addressSent lets the platform record the
// address). The data of list item 0 tells whether the box has the keyboard focus.
#include <QObject>

class QComboBox;
class QCompleter;
class Tabs;

namespace platform {
class UserRegistry;
} // namespace platform

class AddressBar : public QObject
{
    Q_OBJECT
public:
    AddressBar(QComboBox& box, Tabs& tabs);

    // Leading blanks are taken off the first four characters only, and only
    // when the text is longer than four.
    static QString narrowTrim(const QString& text);

    // Appends "url0" (when present), then "url1", "url2"... up to the first
    // missing one.
    void loadTypedUrls(const platform::UserRegistry& registry);
    // Takes the typed addresses out of the list again, leaving "About:Blank"
    // and the text in the box.
    void dropTypedUrls();
    // Suggestions offered as the user types; Enter while they show sends the
    // box's text, or the suggestion the user moved to.
    void setCompleter(QCompleter& completer);
    // What put the text in the box: the user's typing (or choosing), or the
    // program (a drop, an opened file), whose text is no typed address.
    enum class Origin { Typed, Placed };
    void navigateFromAddressBar(bool newTab, Origin origin = Origin::Typed);
    bool focusFlag() const;

signals:
    // Text the user typed or chose, sent to a tab from the box.
    void addressSent(const QString& address);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setFocusFlag(int value);
    void showEntry(int index);

    QComboBox& box_;
    Tabs& tabs_;
    QObject* suggestions_ = nullptr;
};
