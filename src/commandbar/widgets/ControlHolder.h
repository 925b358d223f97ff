#pragma once
// Keeps a hosted control inside whichever bar shows its tool, so the control
// can be set before or after the bar is drawn.
#include <QHBoxLayout>
#include <QWidget>

namespace commandbar {

class ControlHolder : public QWidget
{
public:
    explicit ControlHolder(QWidget* parent = nullptr) : QWidget(parent)
    {
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
    }
    void hold(QWidget* control)
    {
        if (control && control->parentWidget() != this) {
            layout()->addWidget(control);
            control->show();
        }
    }
};

} // namespace commandbar
