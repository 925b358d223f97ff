#include "ToolBarLines.h"

#include <QMainWindow>
#include <QScreen>
#include <QToolBar>
#include <algorithm>

namespace commandbar {

namespace {

Qt::ToolBarArea toolBarArea(DockArea area)
{
    switch (area) {
    case DockArea::Bottom:
        return Qt::BottomToolBarArea;
    case DockArea::Left:
        return Qt::LeftToolBarArea;
    case DockArea::Right:
        return Qt::RightToolBarArea;
    case DockArea::Top:
        break;
    }
    return Qt::TopToolBarArea;
}

} // namespace

ToolBarLines::ToolBarLines(const CommandBar& bar, QMainWindow& window,
                           const QHash<const Band*, QWidget*>& containers)
    : bar_(bar), window_(window), containers_(containers)
{
}

void ToolBarLines::addAll()
{
    std::vector<Band*> bars;
    for (const auto& band : bar_.bands())
        if (band->kind() == BandKind::Toolbar || band->kind() == BandKind::StatusBar)
            bars.push_back(band.get());
    std::stable_sort(bars.begin(), bars.end(), [](const Band* a, const Band* b) {
        if (a->dockArea() != b->dockArea())
            return a->dockArea() < b->dockArea();
        return a->declaredLine() < b->declaredLine();
    });
    const Band* previous = nullptr;
    for (Band* band : bars) {
        const DockArea area =
            band->kind() == BandKind::StatusBar ? DockArea::Bottom : band->dockArea();
        if (previous && previous->dockArea() == band->dockArea() &&
            previous->declaredLine() != band->declaredLine())
            window_.addToolBarBreak(toolBarArea(area));
        window_.addToolBar(toolBarArea(area), static_cast<QToolBar*>(containers_.value(band)));
        previous = band;
    }
}

void ToolBarLines::setFloating(const Band& band, QToolBar& toolBar)
{
    if (band.floating()) {
        window_.removeToolBar(&toolBar);
        toolBar.setParent(&window_, Qt::Tool | Qt::FramelessWindowHint);
        toolBar.setFixedWidth(twipsToPixels(band.floatWidth()));
        // Bottom left of the screen, where it covers neither the address
        // bar nor the top of the page.
        const QRect screen = window_.screen()->geometry();
        toolBar.move(screen.left(), screen.bottom() + 1 - toolBar.sizeHint().height());
        return;
    }
    toolBar.setParent(&window_, Qt::Widget); // a child again, no longer a window of its own
    toolBar.setMinimumWidth(0);
    toolBar.setMaximumWidth(QWIDGETSIZE_MAX);
    placeOnLine(band, toolBar);
}

void ToolBarLines::placeOnLine(const Band& band, QToolBar& toolBar)
{
    // Back before the first docked toolbar of a later line of its area, on a
    // line of its own.
    const Qt::ToolBarArea area = toolBarArea(band.dockArea());
    QToolBar* next = nullptr;
    for (const auto& other : bar_.bands()) {
        auto* candidate = qobject_cast<QToolBar*>(containers_.value(other.get()));
        if (!candidate || candidate == &toolBar || candidate->isWindow() ||
            window_.toolBarArea(candidate) != area || other->dockArea() != band.dockArea() ||
            other->declaredLine() <= band.declaredLine())
            continue;
        if (!next || std::pair(candidate->y(), candidate->x()) < std::pair(next->y(), next->x()))
            next = candidate;
    }
    if (next) {
        window_.insertToolBar(next, &toolBar);
        window_.insertToolBarBreak(next);
    } else {
        window_.addToolBarBreak(area);
        window_.addToolBar(area, &toolBar);
    }
    toolBar.setVisible(band.visible());
}

int ToolBarLines::dockLine(const Band& band) const
{
    auto* toolBar = qobject_cast<QToolBar*>(containers_.value(&band));
    if (!toolBar)
        return band.declaredLine();
    if (!band.visible())
        return -1;
    // Bands that share an area are on the same line when their tops match.
    const Qt::ToolBarArea area = window_.toolBarArea(toolBar);
    QList<int> tops;
    for (QToolBar* other : window_.findChildren<QToolBar*>())
        if (other->isVisible() && window_.toolBarArea(other) == area && !tops.contains(other->y()))
            tops.append(other->y());
    std::sort(tops.begin(), tops.end());
    return int(tops.indexOf(toolBar->y()));
}

int ToolBarLines::leftTwips(const Band& band) const
{
    QWidget* widget = containers_.value(&band);
    return widget ? pixelsToTwips(widget->x()) : 0;
}

int ToolBarLines::twipsToPixels(int twips) const
{
    return int(qint64(twips) * window_.logicalDpiX() / 1440);
}

int ToolBarLines::pixelsToTwips(int pixels) const
{
    return int(qint64(pixels) * 1440 / std::max(1, window_.logicalDpiX()));
}

} // namespace commandbar
