#pragma once
// Message boxes and the few questions the program asks; QtDialogs shows real
// ones and tests answer from a script.
#include <QString>

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
    // The path to save to, starting from suggested; empty when cancelled.
    virtual QString saveFileName(const QString& title, const QString& suggested) = 0;
    // A user name and password for prompt; false when cancelled.
    virtual bool credentials(const QString& prompt, QString& user, QString& password) = 0;
};

class QtDialogs : public Dialogs
{
public:
    void setParent(QWidget* parent) { parent_ = parent; }
    Answer message(const QString& text, Buttons buttons, Icon icon,
                   const QString& title = {}) override;
    QString saveFileName(const QString& title, const QString& suggested) override;
    bool credentials(const QString& prompt, QString& user, QString& password) override;

private:
    QWidget* parent_ = nullptr;
};

} // namespace platform
