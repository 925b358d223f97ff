#pragma once
// The address box's helper: offers, as the user types, the known addresses
// that contain the typed text (typed addresses and pages opened this run),
// newest first.
#include <QCompleter>

class QStringListModel;

class AddressCompleter : public QCompleter
{
    Q_OBJECT
public:
    explicit AddressCompleter(QObject* parent = nullptr);

    static constexpr int maxAddresses = 500;

    // Adds an address, or moves it to the front when known.
    void addAddress(const QString& address);
    QStringList addresses() const;

private:
    QStringListModel* model_;
};
