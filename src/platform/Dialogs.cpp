#include "Dialogs.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QVBoxLayout>

namespace platform {

Dialogs::Answer QtDialogs::message(const QString& text, Buttons buttons, Icon icon,
                                   const QString& title)
{
    QMessageBox box(parent_);
    box.setWindowTitle(title.isEmpty() ? QStringLiteral("QUB-BROWSER") : title);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    switch (icon) {
    case Icon::Information:
        box.setIcon(QMessageBox::Information);
        break;
    case Icon::Question:
        box.setIcon(QMessageBox::Question);
        break;
    case Icon::Warning:
        box.setIcon(QMessageBox::Warning);
        break;
    case Icon::Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    case Icon::None:
        break;
    }
    switch (buttons) {
    case Buttons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case Buttons::OkCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        box.setDefaultButton(QMessageBox::Ok);
        break;
    case Buttons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        break;
    }
    switch (box.exec()) {
    case QMessageBox::Cancel:
        return Answer::Cancel;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        break;
    }
    // Closing the box with its window button counts as the safe answer.
    if (buttons == Buttons::OkCancel && box.clickedButton() == nullptr)
        return Answer::Cancel;
    return Answer::Ok;
}

QString QtDialogs::saveFileName(const QString& title, const QString& suggested,
                                const QString& filter)
{
    return QFileDialog::getSaveFileName(parent_, title, suggested, qtFileFilter(filter));
}

bool QtDialogs::credentials(const QString& prompt, QString& user, QString& password)
{
    QDialog dialog(parent_);
    dialog.setWindowTitle(QStringLiteral("Sign in"));
    auto* layout = new QFormLayout(&dialog);
    auto* text = new QLabel(prompt, &dialog);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    layout->addRow(text);
    auto* userBox = new QLineEdit(user, &dialog);
    auto* passwordBox = new QLineEdit(&dialog);
    passwordBox->setEchoMode(QLineEdit::Password);
    layout->addRow(QStringLiteral("User name:"), userBox);
    layout->addRow(QStringLiteral("Password:"), passwordBox);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    layout->addRow(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    user = userBox->text();
    password = passwordBox->text();
    return true;
}

bool QtDialogs::editText(const QString& prompt, QString& text, const QString& title)
{
    QInputDialog dialog(parent_);
    dialog.setWindowTitle(title.isEmpty() ? QStringLiteral("QUB-BROWSER") : title);
    dialog.setLabelText(prompt);
    dialog.setTextValue(text);
    for (QLabel* label : dialog.findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    text = dialog.textValue();
    return true;
}

int QtDialogs::chooseItem(const QString& prompt, const QStringList& items)
{
    bool chosen = false;
    const QString item = QInputDialog::getItem(parent_, QStringLiteral("QUB-BROWSER"), prompt,
                                               items, 0, false, &chosen);
    return chosen ? int(items.indexOf(item)) : -1;
}

bool QtDialogs::chooseSome(const QString& title, const QString& prompt, const QStringList& items,
                           QList<bool>& chosen)
{
    QDialog dialog(parent_);
    dialog.setWindowTitle(title);
    auto* layout = new QVBoxLayout(&dialog);
    auto* text = new QLabel(prompt, &dialog);
    text->setTextFormat(Qt::PlainText);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text->setWordWrap(true);
    layout->addWidget(text);
    auto* list = new QListWidget(&dialog);
    for (int i = 0; i < items.size(); ++i) {
        auto* item = new QListWidgetItem(items[i], list);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(chosen.value(i) ? Qt::Checked : Qt::Unchecked);
    }
    list->setMinimumWidth(list->sizeHintForColumn(0) + 40);
    layout->addWidget(list);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    layout->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    chosen.clear();
    for (int i = 0; i < list->count(); ++i)
        chosen << (list->item(i)->checkState() == Qt::Checked);
    return true;
}

QString qtFileFilter(const QString& filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1];
        filters << QStringLiteral("%1 (%2)").arg(parts[i], patterns.replace(u';', u' '));
    }
    return filters.join(QStringLiteral(";;"));
}

QString QtDialogs::openFileName(const QString& filter, const QString& title, const QString& folder)
{
    return QFileDialog::getOpenFileName(parent_, title, folder, qtFileFilter(filter));
}

void QtDialogs::showDetails(const QString& title, const Rows& rows)
{
    QDialog dialog(parent_);
    dialog.setWindowTitle(title);
    auto* layout = new QFormLayout(&dialog);
    for (const auto& [name, value] : rows) {
        auto* text = new QLabel(value, &dialog);
        text->setTextFormat(Qt::PlainText);
        text->setTextInteractionFlags(Qt::TextSelectableByMouse);
        text->setWordWrap(true);
        layout->addRow(name + u':', text);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
    layout->addRow(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    dialog.exec();
}

} // namespace platform
