#pragma once
// A band of the command bar: the menu bar, a toolbar, the status band, a
// popup menu, the side bar or one of its child bands. It owns its tools in
// display order.
#include "Tool.h"

#include <memory>
#include <vector>

namespace commandbar {

enum class BandKind { MenuBar, Toolbar, StatusBar, Popup, SideBar, ChildBand };
enum class DockArea { Top, Bottom, Left, Right };

class Band
{
public:
    Band(CommandBar& bar, QString key, BandKind kind) : bar_(bar), key_(std::move(key)), kind_(kind)
    {
    }
    Band(const Band&) = delete;
    Band& operator=(const Band&) = delete;

    const QString& key() const { return key_; }
    BandKind kind() const { return kind_; }

    const QString& caption() const { return caption_; }
    void setCaption(const QString& caption);
    bool visible() const { return visible_; }
    void setVisible(bool visible);
    // A floating toolbar is a small window of its own over the main window,
    // floatWidth twips wide; docking it again puts it back on its line.
    bool floating() const { return floating_; }
    int floatWidth() const { return floatWidth_; }
    void setFloating(bool floating, int widthTwips = 0);
    DockArea dockArea() const { return dockArea_; }
    void setDockArea(DockArea area) { dockArea_ = area; }
    // Row of the band in its dock area, as declared; the rendered bar may
    // report another once the user moves bands (CommandBar::dockLine).
    int declaredLine() const { return line_; }
    void setDeclaredLine(int line) { line_ = line; }
    // Line of the skin that declared the band; 0 for bands made otherwise.
    int sourceLine() const { return sourceLine_; }
    void setSourceLine(int line) { sourceLine_ = line; }
    // Key of the side bar a child band belongs to.
    const QString& parentKey() const { return parentKey_; }
    void setParentKey(const QString& key) { parentKey_ = key; }
    // Key of the child band a side bar shows.
    const QString& currentChild() const { return currentChild_; }
    void setCurrentChild(const QString& key);

    int count() const { return int(tools_.size()); }
    Tool* at(int index) const { return tools_.at(size_t(index)).get(); }
    // First tool with that key, or nullptr.
    Tool* tool(const QString& key) const;
    int indexOf(const Tool* tool) const;

private:
    friend class CommandBar;

    CommandBar& bar_;
    QString key_;
    BandKind kind_;
    QString caption_;
    bool visible_ = true;
    bool floating_ = false;
    int floatWidth_ = 0;
    DockArea dockArea_ = DockArea::Top;
    int line_ = 0;
    int sourceLine_ = 0;
    QString parentKey_;
    QString currentChild_;
    std::vector<std::unique_ptr<Tool>> tools_;
};

} // namespace commandbar
