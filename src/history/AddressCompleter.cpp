#include "AddressCompleter.h"
#include "history/HistoryStore.h"

#include <QAbstractItemView>
#include <QStringListModel>

AddressCompleter::AddressCompleter(QObject* parent)
    : QCompleter(parent), model_(new QStringListModel(this))
{
    setModel(model_);
    // The list is chosen here, not by the completer: history finds pages by
    // their titles too, which the list does not show.
    setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    setMaxVisibleItems(12);
}

void AddressCompleter::addAddress(const QString& address)
{
    if (address.isEmpty() || address.startsWith(QLatin1String("about:"), Qt::CaseInsensitive))
        return;
    // Hooks repeat for every status change of a page: a known newest address
    // changes nothing.
    if (!known_.isEmpty() && known_.first() == address)
        return;
    known_.removeAll(address);
    known_.prepend(address);
    if (known_.size() > maxAddresses)
        known_.resize(maxAddresses);
}

QStringList AddressCompleter::addresses() const
{
    return known_;
}

void AddressCompleter::forget()
{
    known_.clear();
    typed_.clear();
    model_->setStringList({});
}

void AddressCompleter::setHistory(HistoryStore& store)
{
    history_ = &store;
    connect(&store, &HistoryStore::completed, this, &AddressCompleter::addFromHistory);
}

void AddressCompleter::suggest(const QString& text)
{
    typed_ = text;
    QStringList list;
    for (const QString& address : known_)
        if (list.size() < maxSuggestions && address.contains(text, Qt::CaseInsensitive))
            list << address;
    model_->setStringList(list);
    if (history_ && !text.trimmed().isEmpty())
        history_->requestCompletion(text, maxSuggestions);
}

QStringList AddressCompleter::suggestions() const
{
    return model_->stringList();
}

void AddressCompleter::addFromHistory(const QString& text, const QStringList& urls)
{
    if (text != typed_)
        return;
    QStringList list = model_->stringList();
    const qsizetype before = list.size();
    for (const QString& url : urls)
        if (list.size() < maxSuggestions && !list.contains(url))
            list << url;
    if (list.size() == before)
        return;
    model_->setStringList(list);
    // Shown again, grown, unless the box has lost the keyboard meanwhile.
    if (widget() && widget()->hasFocus())
        complete();
}
