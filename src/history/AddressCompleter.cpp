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
    list.removeAll(address);
    list.prepend(address);
    model_->setStringList(list);
}

QStringList AddressCompleter::addresses() const
{
    return model_->stringList();
}
