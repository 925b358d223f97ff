#pragma once
// Where the command bar's tool bars sit in the main window: each band on its
// declared line of its dock area, a floating band as a small window of its
// own, and the lines and positions the bar's model reads back. Lengths in the
// skin are twips, converted here at the window's resolution.
#include "commandbar/CommandBar.h"

#include <QHash>

class QMainWindow;
class QToolBar;
class QWidget;

namespace commandbar {

class ToolBarLines : public BandPlacement
{
public:
    // containers: the widget that shows each band.
    ToolBarLines(const CommandBar& bar, QMainWindow& window,
                 const QHash<const Band*, QWidget*>& containers);

    // Start-up: every toolbar and the status band in their areas, line by line.
    void addAll();
    // Docks the tool bar in its band's area, on a line of its own after the
    // bands of earlier lines.
    void placeOnLine(const Band& band, QToolBar& toolBar);
    // Makes the tool bar a window of its own or docks it again, as its band says.
    void setFloating(const Band& band, QToolBar& toolBar);

    int dockLine(const Band& band) const override;
    int leftTwips(const Band& band) const override;

    int twipsToPixels(int twips) const;
    int pixelsToTwips(int pixels) const;

private:
    const CommandBar& bar_;
    QMainWindow& window_;
    const QHash<const Band*, QWidget*>& containers_;
};

} // namespace commandbar
