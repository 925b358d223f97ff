#pragma once
// The command bar as a model with no widgets: its bands in order, the bar's
// own collection of all tools, and the events of the bar as signals. A
// renderer (CommandBarWidgets) shows it and feeds user actions back in through
// the report functions; tests drive those directly.
#include "Band.h"

#include <QHash>
#include <QObject>
#include <QPoint>

namespace commandbar {

// Where the rendered bar places a band; the model falls back to the declared
// line when nothing renders it.
class BandPlacement
{
public:
    virtual ~BandPlacement() = default;
    // -1 for a band that is not shown.
    virtual int dockLine(const Band& band) const = 0;
    virtual int leftTwips(const Band& band) const = 0;
};

class CommandBar : public QObject
{
    Q_OBJECT
public:
    explicit CommandBar(QObject* parent = nullptr);
    ~CommandBar() override;

    Band* addBand(const QString& key, BandKind kind);
    Band* band(const QString& key) const;
    // Takes the band and its tools away; drop-downs elsewhere that open it
    // must go first.
    void removeBand(const QString& key);
    const std::vector<std::unique_ptr<Band>>& bands() const { return bands_; }
    // The tool with that key in that band, or nullptr.
    Tool* tool(const QString& bandKey, const QString& toolKey) const;
    // Whether that tool of that band is there and checked.
    bool isChecked(const QString& bandKey, const QString& toolKey) const;

    // The bar's own collection of all tools, one per key.
    Tool* addTool(const QString& key, int id, ControlType type);
    Tool* collectionTool(const QString& key) const;
    void removeCollectionTool(const QString& key);
    const std::vector<std::unique_ptr<Tool>>& tools() const { return tools_; }

    // Puts a copy of source into band at index (-1: at the end).
    Tool* insertTool(Band& band, const Tool& source, int index = -1);
    void removeTool(Band& band, int index);

    // The picture the page icon of the address band shows; generated tools
    // made "with icon" take it.
    const QIcon& pagePicture() const { return pagePicture_; }
    void setPagePicture(const QIcon& picture) { pagePicture_ = picture; }

    void recalcLayout() { emit layoutRecalculated(); }
    int dockLine(const Band& band) const;
    int leftTwips(const Band& band) const;
    void setPlacement(const BandPlacement* placement) { placement_ = placement; }

    // What the renderer reports.
    void reportClick(Tool* tool) { emit toolClicked(tool); }
    void reportSecondary(Tool* tool) { emit toolSecondaryAction(tool); }
    void reportHover(Tool* tool) { emit toolHovered(tool); }
    void reportDropDown(Band* band) { emit bandDropDown(band); }
    void reportShown(Band* band) { emit bandShown(band); }
    void reportChildBandChanged(Band* band) { emit childBandChanged(band); }
    // The bar's own customise menu is about to open ("SysCustomize"); false
    // when a handler cancelled it.
    bool reportCustomize();
    void cancelCustomize() { customizeCancelled_ = true; }
    // Asks the renderer to pop up a band as a context menu.
    void popUp(Band* band) { emit popUpRequested(band); }
    // Asks the renderer to dock a toolbar back on its declared line in its
    // area, wherever the user moved it.
    void dockOnItsLine(Band* band) { emit dockRequested(band); }

signals:
    void toolClicked(commandbar::Tool* tool);
    void toolSecondaryAction(commandbar::Tool* tool);
    void toolHovered(commandbar::Tool* tool);
    void bandDropDown(commandbar::Band* band);
    void bandShown(commandbar::Band* band);
    void childBandChanged(commandbar::Band* band);

    void toolChanged(commandbar::Tool* tool);
    void bandAdded(commandbar::Band* band);
    void bandAboutToBeRemoved(commandbar::Band* band);
    void bandChanged(commandbar::Band* band);
    void toolInserted(commandbar::Band* band, int index);
    void toolAboutToBeRemoved(commandbar::Band* band, int index);
    void layoutRecalculated();
    void popUpRequested(commandbar::Band* band);
    void dockRequested(commandbar::Band* band);

private:
    friend class Tool;
    friend class Band;

    std::vector<std::unique_ptr<Band>> bands_;
    std::vector<std::unique_ptr<Tool>> tools_;
    // First band and collection tool of each key: menus of ten thousand
    // favourites are built by key.
    QHash<QString, Band*> bandIndex_;
    QHash<QString, Tool*> toolIndex_;
    std::unique_ptr<Band> customizeBand_;
    const BandPlacement* placement_ = nullptr;
    QIcon pagePicture_;
    bool customizeCancelled_ = false;
};

} // namespace commandbar
