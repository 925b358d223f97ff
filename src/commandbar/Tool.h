#pragma once
// One tool of the command bar: a button, separator, drop-down or hosted
// control. A tool placed in a band is that band's own copy; the same key in two
// bands is two tools. Every change is reported through the owning CommandBar.
#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QString>

namespace commandbar {

class Band;
class CommandBar;

enum class ControlType { Button = 0, DropDown = 1, Hosted = 2, Label = 3, Separator = 5 };
// How a tool shows in a tool bar: its picture alone when it has one, else its
// caption; or picture and caption side by side (style 3 of the skin).
enum class DisplayStyle { PictureOrCaption, PictureAndCaption };

class Tool
{
public:
    Tool(CommandBar& bar, QString key, int id, ControlType type);
    Tool(const Tool&) = delete;
    Tool& operator=(const Tool&) = delete;

    const QString& key() const { return key_; }
    // Renames a band's copy in place: its identifier, caption and place stay.
    void setKey(const QString& key) { key_ = key; }
    int id() const { return id_; }
    // Renumbers a band's copy in place, as setKey renames it.
    void setId(int id) { id_ = id; }
    ControlType type() const { return type_; }
    Band* band() const { return band_; }

    const QString& caption() const { return caption_; }
    void setCaption(const QString& caption);
    // A caption written for the bar (the skin, a language file) marks its
    // access key with "&"; one made from data (a page title, a favourite's
    // name, an address) is shown as written, "&" and all.
    bool marksAccessKey() const { return marksAccessKey_; }
    void setMarksAccessKey(bool marks) { marksAccessKey_ = marks; }
    // The caption as the text of a menu entry or button.
    QString shownCaption() const;
    const QString& tooltip() const { return tooltip_; }
    void setTooltip(const QString& tooltip);
    // Free text that the program keeps on a tool for its own use.
    const QString& tag() const { return tag_; }
    void setTag(const QString& tag) { tag_ = tag; }

    bool checked() const { return checked_; }
    void setChecked(bool checked);
    // Toggle tools show a check mark even while unchecked.
    bool checkable() const { return checkable_ || checked_; }
    void setCheckable(bool checkable);
    bool enabled() const { return enabled_; }
    void setEnabled(bool enabled);
    bool visible() const { return visible_; }
    void setVisible(bool visible);

    const QString& iconName() const { return iconName_; }
    void setIconName(const QString& name);
    const QIcon& picture() const { return picture_; }
    void setPicture(const QIcon& picture);
    const QString& shortcut() const { return shortcut_; }
    void setShortcut(const QString& shortcut);
    DisplayStyle displayStyle() const { return displayStyle_; }
    void setDisplayStyle(DisplayStyle style);

    // Width in twips; 0 lets the bar choose.
    int width() const { return width_; }
    void setWidth(int twips);
    // A hosted tool's widget; the bar's model holds it without knowing widgets.
    QObject* control() const { return control_; }
    void setControl(QObject* control);
    // Key of the popup band a drop-down tool opens.
    const QString& subBand() const { return subBand_; }
    void setSubBand(const QString& key);

    // A new tool with the same key and properties, owned by nobody yet.
    std::unique_ptr<Tool> copy() const;

private:
    friend class CommandBar;
    void changed();

    CommandBar& bar_;
    Band* band_ = nullptr;
    QString key_;
    int id_;
    ControlType type_;
    QString caption_, tooltip_, tag_, iconName_, shortcut_, subBand_;
    QIcon picture_;
    bool checked_ = false, checkable_ = false, enabled_ = true, visible_ = true;
    bool marksAccessKey_ = false;
    DisplayStyle displayStyle_ = DisplayStyle::PictureOrCaption;
    int width_ = 0;
    QPointer<QObject> control_;
};

} // namespace commandbar
