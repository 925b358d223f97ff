#include "MenuKeys.h"

#include <QAction>
#include <QMainWindow>
#include <QMenuBar>
#include <QProxyStyle>

namespace commandbar {

namespace {

// The desktop's own style, but Alt pressed and let go alone puts the menu
// bar in keyboard mode, as on every desktop that has one.
class AltKeyStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override
    {
        if (hint == SH_MenuBar_AltKeyNavigation)
            return 1;
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

} // namespace

void enableMenuKeys(QMenuBar& menuBar, QMainWindow& window)
{
    auto* style = new AltKeyStyle;
    style->setParent(&menuBar);
    menuBar.setStyle(style);
    auto* f10 = new QAction(&window);
    f10->setShortcut(Qt::Key_F10);
    window.addAction(f10);
    QObject::connect(f10, &QAction::triggered, &menuBar, [&menuBar] {
        for (QAction* menu : menuBar.actions())
            if (menu->isVisible() && menu->isEnabled()) {
                menuBar.setActiveAction(menu);
                return;
            }
    });
}

} // namespace commandbar
