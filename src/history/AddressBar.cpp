#include "AddressBar.h"
#include "platform/UserRegistry.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Tabs.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

AddressBar::AddressBar(QComboBox& box, Tabs& tabs) : box_(box), tabs_(tabs)
{
    box_.setEditable(true);
    // The box, not its line edit, takes the focus and the keys: it hands
    // them to the line edit directly, past any filter there.
    box_.installEventFilter(this);
    // The box would choose a list entry when the text left behind matches
    // one; only Enter and the list itself send an address.
    disconnect(box_.lineEdit(), &QLineEdit::editingFinished, &box_, nullptr);
    connect(&box_, &QComboBox::activated, this, [this] { navigateFromAddressBar(false); });
}

void AddressBar::setCompleter(QCompleter& completer)
{
    // On the line edit, not the box: the box would turn a chosen suggestion
    // into a list entry and send it a second time.
    box_.lineEdit()->setCompleter(&completer);
    // The open list takes the keys and hands Enter to the line edit, past
    // the box. Filters run newest first, so this one sees Enter before the
    // completer's own.
    suggestions_ = completer.popup();
    suggestions_->installEventFilter(this);
    connect(&completer, qOverload<const QString&>(&QCompleter::activated), this,
            [this](const QString& address) {
                box_.setEditText(address);
                navigateFromAddressBar(false);
            });
}

QString AddressBar::narrowTrim(const QString& text)
{
    if (text.size() <= 4)
        return text;
    QString head = text.left(4);
    while (head.startsWith(u' '))
        head.remove(0, 1);
    return head + text.mid(4);
}

void AddressBar::loadTypedUrls(const platform::UserRegistry& registry)
{
    for (int i = 0; i <= 32767; ++i) {
        const QString url =
            registry.readValue(platform::typedUrlsKey, QStringLiteral("url%1").arg(i));
        if (url.isEmpty()) {
            if (i == 0)
                continue; // the list is numbered from 1; "url0" is optional
            break;
        }
        box_.addItem(url);
    }
}

void AddressBar::dropTypedUrls()
{
    const QString shown = box_.currentText();
    while (box_.count() > 1)
        box_.removeItem(box_.count() - 1);
    box_.setEditText(shown);
}

void AddressBar::navigateFromAddressBar(bool newTab, Origin origin)
{
    const QString address = narrowTrim(box_.currentText());
    if (newTab) {
        tabs_.newTab(address, true);
    } else if (platform::BrowserView* view = tabs_.currentView()) {
        view->navigate(address);
    }
    box_.lineEdit()->selectAll();
    if (origin == Origin::Typed)
        emit addressSent(address);
}

void AddressBar::showEntry(int index)
{
    if (box_.count() == 0)
        return;
    // Choosing the index shows the entry's text; only activated sends it.
    box_.setCurrentIndex(std::clamp(index, 0, box_.count() - 1));
    box_.lineEdit()->selectAll();
}

bool AddressBar::focusFlag() const
{
    return box_.count() > 0 && box_.itemData(0).toInt() == 1;
}

void AddressBar::setFocusFlag(int value)
{
    if (box_.count() == 0)
        return;
    // The box answers any change to its current item by showing that item's
    // text again: with "About:Blank" chosen earlier, every focus change would
    // put it back over the address shown. The flag is nobody's display.
    const QSignalBlocker quiet(box_.model());
    box_.setItemData(0, value);
}

bool AddressBar::eventFilter(QObject* watched, QEvent* event)
{
    const bool fromSuggestions = watched == suggestions_;
    if (fromSuggestions && event->type() != QEvent::KeyPress)
        return false;
    switch (event->type()) {
    case QEvent::FocusIn:
        setFocusFlag(1);
        break;
    case QEvent::FocusOut:
        setFocusFlag(0);
        break;
    case QEvent::Wheel:
        showEntry(box_.currentIndex() +
                  (static_cast<QWheelEvent*>(event)->angleDelta().y() > 0 ? -1 : 1));
        return true;
    case QEvent::KeyPress: {
        const auto* key = static_cast<QKeyEvent*>(event);
        // Moving through the closed list only shows an entry (the box would
        // send each one it passed); Alt+Down still opens the list.
        if (!fromSuggestions && !(key->modifiers() & Qt::AltModifier)) {
            switch (key->key()) {
            case Qt::Key_Up:
                showEntry(box_.currentIndex() - 1);
                return true;
            case Qt::Key_Down:
                showEntry(box_.currentIndex() + 1);
                return true;
            case Qt::Key_PageUp:
                showEntry(0);
                return true;
            case Qt::Key_PageDown:
                showEntry(box_.count() - 1);
                return true;
            default:
                break;
            }
        }
        if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
            break;
        const Qt::KeyboardModifiers shiftState =
            key->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
        if (fromSuggestions) {
            // The list marks the best match as current without selecting it;
            // only an entry the user moved to is selected, and only that one
            // replaces what was typed.
            auto* list = static_cast<QAbstractItemView*>(watched);
            if (const QModelIndexList chosen = list->selectionModel()->selectedIndexes();
                !chosen.isEmpty())
                box_.setEditText(chosen.first().data().toString());
            list->hide();
        }
        navigateFromAddressBar(shiftState == Qt::ControlModifier);
        return true;
    }
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
