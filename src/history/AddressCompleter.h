#pragma once
// The address box's helper: offers, as the user types, the known addresses
// that contain the typed text (typed addresses and pages opened this run),
// newest first, then what the history store finds for it once it answers.
#include <QCompleter>

class QStringListModel;

class HistoryStore;

class AddressCompleter : public QCompleter
{
    Q_OBJECT
public:
    explicit AddressCompleter(QObject* parent = nullptr);

    static constexpr int maxAddresses = 500;
    static constexpr int maxSuggestions = 30;

    // Adds an address, or moves it to the front when known.
    void addAddress(const QString& address);
    QStringList addresses() const;
    // Forgets every address it knows and every suggestion shown.
    void forget();
    // Where suggestions beyond the known addresses come from.
    void setHistory(HistoryStore& store);
    // The list for typed text: the known addresses at once, history's after.
    void suggest(const QString& text);
    QStringList suggestions() const;

private:
    void addFromHistory(const QString& text, const QStringList& urls);

    QStringList known_;
    QStringListModel* model_;
    HistoryStore* history_ = nullptr;
    QString typed_;
};
