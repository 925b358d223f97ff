#pragma once
// Message boxes, as the program asks them; QtDialogs shows real ones and tests
// answer from a script.
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
};

class QtDialogs : public Dialogs
{
public:
    void setParent(QWidget* parent) { parent_ = parent; }
    Answer message(const QString& text, Buttons buttons, Icon icon,
                   const QString& title = {}) override;

private:
    QWidget* parent_ = nullptr;
};

} // namespace platform
