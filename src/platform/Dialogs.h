#pragma once
// Message boxes and the few questions the program asks; QtDialogs shows real
// ones and tests answer from a script. Every text is shown as plain text: a
// page's words reach them, and markup would let a page dress a dialog up and
// put links in it.
#include <QList>
#include <QString>
#include <QStringList>
#include <utility>

class QWidget;

namespace platform {

class Dialogs
{
public:
    enum class Buttons { Ok, OkCancel, YesNo };
    enum class Icon { None, Information, Question, Warning, Critical };
    enum class Answer { Ok, Cancel, Yes, No };

    virtual ~Dialogs() = default;
    virtual Answer message(const QString& text, Buttons buttons, Icon icon,
                           const QString& title = {}) = 0;
    // The path to save to, starting from suggested; filter as in openFileName.
    // Empty when cancelled.
    virtual QString saveFileName(const QString& title, const QString& suggested,
                                 const QString& filter = {}) = 0;
    // A user name and password for prompt; false when cancelled.
    virtual bool credentials(const QString& prompt, QString& user, QString& password) = 0;
    // A line of text the user may change, starting from text; false when
    // cancelled. Titled with title, or the program's name when empty.
    virtual bool editText(const QString& prompt, QString& text, const QString& title = {}) = 0;
    // A line of text, starting from suggested; empty when cancelled.
    QString inputText(const QString& prompt, const QString& suggested)
    {
        QString text = suggested;
        return editText(prompt, text) ? text : QString();
    }
    // A file to open, starting in folder (the working folder when empty);
    // filter is pairs of description and patterns joined by "|"
    // ("Pages|*.htm;*.html|All|*.*"). Empty when cancelled.
    virtual QString openFileName(const QString& filter, const QString& title = {},
                                 const QString& folder = {}) = 0;
    // One of items, by its index; -1 when cancelled.
    virtual int chooseItem(const QString& prompt, const QStringList& items) = 0;
    // Any of items, under prompt: chosen holds one switch an item and the
    // user's choice after; false, and chosen as it was, when cancelled.
    virtual bool chooseSome(const QString& title, const QString& prompt, const QStringList& items,
                            QList<bool>& chosen) = 0;
    using Rows = QList<std::pair<QString, QString>>;
    // Facts to read, a name and a value per row, until the user closes them.
    virtual void showDetails(const QString& title, const Rows& rows) = 0;
};

// The filter of openFileName in the form of Qt's file dialogs.
QString qtFileFilter(const QString& filter);

class QtDialogs : public Dialogs
{
public:
    void setParent(QWidget* parent) { parent_ = parent; }
    Answer message(const QString& text, Buttons buttons, Icon icon,
                   const QString& title = {}) override;
    QString saveFileName(const QString& title, const QString& suggested,
                         const QString& filter = {}) override;
    bool credentials(const QString& prompt, QString& user, QString& password) override;
    bool editText(const QString& prompt, QString& text, const QString& title = {}) override;
    QString openFileName(const QString& filter, const QString& title = {},
                         const QString& folder = {}) override;
    bool chooseSome(const QString& title, const QString& prompt, const QStringList& items,
                    QList<bool>& chosen) override;
    int chooseItem(const QString& prompt, const QStringList& items) override;
    void showDetails(const QString& title, const Rows& rows) override;

private:
    QWidget* parent_ = nullptr;
};

} // namespace platform
