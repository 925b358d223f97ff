#include "CommandBar.h"

namespace commandbar {

Tool::Tool(CommandBar& bar, QString key, int id, ControlType type)
    : bar_(bar), key_(std::move(key)), id_(id), type_(type)
{
}

void Tool::changed()
{
    emit bar_.toolChanged(this);
}

// Setters report only real changes, so a renderer never redraws for nothing.
template <typename T> static bool assign(T& field, const T& value)
{
    if (field == value)
        return false;
    field = value;
    return true;
}

void Tool::setCaption(const QString& caption)
{
    if (assign(caption_, caption))
        changed();
}

QString Tool::shownCaption() const
{
    return marksAccessKey_ ? caption_ : QString(caption_).replace(u'&', QLatin1String("&&"));
}

void Tool::setTooltip(const QString& tooltip)
{
    if (assign(tooltip_, tooltip))
        changed();
}

void Tool::setChecked(bool checked)
{
    if (assign(checked_, checked))
        changed();
}

void Tool::setCheckable(bool checkable)
{
    if (assign(checkable_, checkable))
        changed();
}

void Tool::setEnabled(bool enabled)
{
    if (assign(enabled_, enabled))
        changed();
}

void Tool::setVisible(bool visible)
{
    if (assign(visible_, visible))
        changed();
}

void Tool::setIconName(const QString& name)
{
    if (assign(iconName_, name))
        changed();
}

void Tool::setPicture(const QIcon& picture)
{
    // Loading pictures are set on every progress step; the same one again
    // must not redraw the bar.
    if (picture_.cacheKey() == picture.cacheKey())
        return;
    picture_ = picture;
    changed();
}

void Tool::setShortcut(const QString& shortcut)
{
    if (assign(shortcut_, shortcut))
        changed();
}

void Tool::setDisplayStyle(DisplayStyle style)
{
    if (assign(displayStyle_, style))
        changed();
}

void Tool::setWidth(int twips)
{
    if (assign(width_, twips))
        changed();
}

void Tool::setControl(QObject* control)
{
    control_ = control;
    changed();
}

void Tool::setSubBand(const QString& key)
{
    if (assign(subBand_, key))
        changed();
}

std::unique_ptr<Tool> Tool::copy() const
{
    auto tool = std::make_unique<Tool>(bar_, key_, id_, type_);
    tool->caption_ = caption_;
    tool->tooltip_ = tooltip_;
    tool->tag_ = tag_;
    tool->iconName_ = iconName_;
    tool->shortcut_ = shortcut_;
    tool->subBand_ = subBand_;
    tool->picture_ = picture_;
    tool->checked_ = checked_;
    tool->marksAccessKey_ = marksAccessKey_;
    tool->checkable_ = checkable_;
    tool->enabled_ = enabled_;
    tool->visible_ = visible_;
    tool->displayStyle_ = displayStyle_;
    tool->width_ = width_;
    tool->control_ = control_;
    return tool;
}

void Band::setCaption(const QString& caption)
{
    if (assign(caption_, caption))
        emit bar_.bandChanged(this);
}

void Band::setVisible(bool visible)
{
    if (assign(visible_, visible))
        emit bar_.bandChanged(this);
}

void Band::setCurrentChild(const QString& key)
{
    if (assign(currentChild_, key))
        emit bar_.bandChanged(this);
}

void Band::setFloating(bool floating, int widthTwips)
{
    if (kind_ != BandKind::Toolbar)
        return;
    floatWidth_ = widthTwips;
    if (assign(floating_, floating))
        emit bar_.bandChanged(this);
}

Tool* Band::tool(const QString& key) const
{
    for (const auto& tool : tools_)
        if (tool->key() == key)
            return tool.get();
    return nullptr;
}

int Band::indexOf(const Tool* tool) const
{
    for (size_t i = 0; i < tools_.size(); ++i)
        if (tools_[i].get() == tool)
            return int(i);
    return -1;
}

CommandBar::CommandBar(QObject* parent) : QObject(parent) {}

CommandBar::~CommandBar() = default;

Band* CommandBar::addBand(const QString& key, BandKind kind)
{
    bands_.push_back(std::make_unique<Band>(*this, key, kind));
    Band* added = bands_.back().get();
    bandIndex_.insert(key, bandIndex_.value(key, added));
    emit bandAdded(added);
    return added;
}

Band* CommandBar::band(const QString& key) const
{
    return bandIndex_.value(key);
}

void CommandBar::removeBand(const QString& key)
{
    Band* gone = band(key);
    if (!gone)
        return;
    emit bandAboutToBeRemoved(gone);
    std::erase_if(bands_, [gone](const std::unique_ptr<Band>& b) { return b.get() == gone; });
    bandIndex_.remove(key);
    for (const auto& b : bands_)
        if (b->key() == key) {
            bandIndex_.insert(key, b.get());
            break;
        }
}

Tool* CommandBar::tool(const QString& bandKey, const QString& toolKey) const
{
    Band* b = band(bandKey);
    return b ? b->tool(toolKey) : nullptr;
}

bool CommandBar::isChecked(const QString& bandKey, const QString& toolKey) const
{
    const Tool* found = tool(bandKey, toolKey);
    return found && found->checked();
}

Tool* CommandBar::addTool(const QString& key, int id, ControlType type)
{
    if (Tool* existing = collectionTool(key))
        return existing;
    tools_.push_back(std::make_unique<Tool>(*this, key, id, type));
    toolIndex_.insert(key, tools_.back().get());
    return tools_.back().get();
}

Tool* CommandBar::collectionTool(const QString& key) const
{
    return toolIndex_.value(key);
}

void CommandBar::removeCollectionTool(const QString& key)
{
    toolIndex_.remove(key);
    std::erase_if(tools_, [&](const std::unique_ptr<Tool>& tool) { return tool->key() == key; });
}

Tool* CommandBar::insertTool(Band& band, const Tool& source, int index)
{
    auto tool = source.copy();
    tool->band_ = &band;
    if (index < 0 || index > band.count())
        index = band.count();
    Tool* raw = tool.get();
    band.tools_.insert(band.tools_.begin() + index, std::move(tool));
    emit toolInserted(&band, index);
    return raw;
}

void CommandBar::removeTool(Band& band, int index)
{
    if (index < 0 || index >= band.count())
        return;
    emit toolAboutToBeRemoved(&band, index);
    band.tools_.erase(band.tools_.begin() + index);
}

int CommandBar::dockLine(const Band& band) const
{
    return placement_ ? placement_->dockLine(band) : band.declaredLine();
}

int CommandBar::leftTwips(const Band& band) const
{
    return placement_ ? placement_->leftTwips(band) : 0;
}

bool CommandBar::reportCustomize()
{
    if (!customizeBand_)
        customizeBand_ =
            std::make_unique<Band>(*this, QStringLiteral("SysCustomize"), BandKind::Popup);
    customizeCancelled_ = false;
    emit bandDropDown(customizeBand_.get());
    return !customizeCancelled_;
}

} // namespace commandbar
