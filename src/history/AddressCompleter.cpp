#include "AddressCompleter.h"

#include <QStringListModel>

AddressCompleter::AddressCompleter(QObject* parent)
    : QCompleter(parent), model_(new QStringListModel(this))
{
    setModel(model_);
    setCaseSensitivity(Qt::CaseInsensitive);
    setFilterMode(Qt::MatchContains);
    setCompletionMode(QCompleter::PopupCompletion);
    setMaxVisibleItems(12);
}

void AddressCompleter::addAddress(const QString& address)
{
    if (address.isEmpty() || address.startsWith(QLatin1String("about:"), Qt::CaseInsensitive))
        return;
    QStringList list = model_->stringList();
    // Hooks repeat for every status change of a page: a known newest address
    // changes nothing, so an open suggestion list is left alone.
    if (!list.isEmpty() && list.first() == address)
        return;
    list.removeAll(address);
    list.prepend(address);
    if (list.size() > maxAddresses)
        list.resize(maxAddresses);
    model_->setStringList(list);
}

QStringList AddressCompleter::addresses() const
{
    return model_->stringList();
}
