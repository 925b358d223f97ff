#include "SkinLoader.h"
#include "CommandBar.h"

#include <QFile>
#include <QHash>
#include <QKeySequence>
#include <QSet>
#include <array>

namespace commandbar {

QString SkinError::text(const QString& fileName) const
{
    if (line == 0)
        return fileName + QStringLiteral(": ") + message;
    return QStringLiteral("%1, line %2: %3").arg(fileName).arg(line).arg(message);
}

namespace {

struct Token
{
    QString name;
    QString value;
    bool hasValue = false;
};

// Splits a line into words and name=value pairs; values may be quoted, with
// \" and \\ inside the quotes.
std::optional<QString> tokenize(const QString& line, QList<Token>& tokens)
{
    qsizetype i = 0;
    const qsizetype n = line.size();
    while (i < n) {
        while (i < n && line[i].isSpace())
            ++i;
        if (i >= n || line[i] == QLatin1Char('#'))
            break;
        Token token;
        while (i < n && !line[i].isSpace() && line[i] != QLatin1Char('='))
            token.name += line[i++];
        if (i < n && line[i] == QLatin1Char('=')) {
            token.hasValue = true;
            ++i;
            if (i < n && line[i] == QLatin1Char('"')) {
                ++i;
                bool closed = false;
                while (i < n) {
                    if (line[i] == QLatin1Char('\\') && i + 1 < n) {
                        token.value += line[i + 1];
                        i += 2;
                    } else if (line[i] == QLatin1Char('"')) {
                        closed = true;
                        ++i;
                        break;
                    } else {
                        token.value += line[i++];
                    }
                }
                if (!closed)
                    return QStringLiteral("a quoted value is not closed");
            } else {
                while (i < n && !line[i].isSpace())
                    token.value += line[i++];
            }
        }
        if (token.name.isEmpty())
            return QStringLiteral("a value has no name before its \"=\"");
        tokens.append(token);
    }
    return std::nullopt;
}

const QHash<QString, BandKind>& bandKinds()
{
    static const QHash<QString, BandKind> kinds{{QStringLiteral("menubar"), BandKind::MenuBar},
                                                {QStringLiteral("toolbar"), BandKind::Toolbar},
                                                {QStringLiteral("statusbar"), BandKind::StatusBar},
                                                {QStringLiteral("popup"), BandKind::Popup},
                                                {QStringLiteral("sidebar"), BandKind::SideBar},
                                                {QStringLiteral("child"), BandKind::ChildBand}};
    return kinds;
}

const QHash<QString, ControlType>& toolTypes()
{
    static const QHash<QString, ControlType> types{
        {QStringLiteral("button"), ControlType::Button},
        {QStringLiteral("dropdown"), ControlType::DropDown},
        {QStringLiteral("control"), ControlType::Hosted},
        {QStringLiteral("label"), ControlType::Label},
        {QStringLiteral("separator"), ControlType::Separator}};
    return types;
}

const QHash<QString, DockArea>& dockAreas()
{
    static const QHash<QString, DockArea> areas{{QStringLiteral("top"), DockArea::Top},
                                                {QStringLiteral("bottom"), DockArea::Bottom},
                                                {QStringLiteral("left"), DockArea::Left},
                                                {QStringLiteral("right"), DockArea::Right}};
    return areas;
}

// What a setting's value must be. A band reference is checked against the
// band it names: a drop-down's band must be a popup, a child's parent a side
// bar declared before it.
enum class Value { Text, Flag, Number, Dock, PopupBand, ParentBand };

// One setting of the skin: its name, its value, and what it does to a band or
// a tool. The one list of the vocabulary, read by the check and the build.
template <class Target> struct Setting
{
    const char* name;
    Value value;
    void (*apply)(Target& target, const QString& value);
};

const std::array<Setting<Band>, 5> bandSettings{{
    {"caption", Value::Text, [](Band& b, const QString& v) { b.setCaption(v); }},
    {"hidden", Value::Flag, [](Band& b, const QString&) { b.setVisible(false); }},
    {"dock", Value::Dock, [](Band& b, const QString& v) { b.setDockArea(dockAreas().value(v)); }},
    {"line", Value::Number, [](Band& b, const QString& v) { b.setDeclaredLine(v.toInt()); }},
    {"parent", Value::ParentBand, [](Band& b, const QString& v) { b.setParentKey(v); }},
}};

// The identifier is taken before the tool is made.
const std::array<Setting<Tool>, 13> toolSettings{{
    {"caption", Value::Text, [](Tool& t, const QString& v) { t.setCaption(v); }},
    {"tip", Value::Text, [](Tool& t, const QString& v) { t.setTooltip(v); }},
    {"icon", Value::Text, [](Tool& t, const QString& v) { t.setIconName(v); }},
    {"shortcut", Value::Text, [](Tool& t, const QString& v) { t.setShortcut(v); }},
    {"tag", Value::Text, [](Tool& t, const QString& v) { t.setTag(v); }},
    {"check", Value::Flag, [](Tool& t, const QString&) { t.setCheckable(true); }},
    {"checked", Value::Flag, [](Tool& t, const QString&) { t.setChecked(true); }},
    {"disabled", Value::Flag, [](Tool& t, const QString&) { t.setEnabled(false); }},
    {"hidden", Value::Flag, [](Tool& t, const QString&) { t.setVisible(false); }},
    {"id", Value::Number, [](Tool&, const QString&) {}},
    {"width", Value::Number, [](Tool& t, const QString& v) { t.setWidth(v.toInt()); }},
    {"style", Value::Number,
     [](Tool& t, const QString& v) {
         t.setDisplayStyle(v.toInt() == 3 ? DisplayStyle::PictureAndCaption
                                          : DisplayStyle::PictureOrCaption);
     }},
    {"band", Value::PopupBand, [](Tool& t, const QString& v) { t.setSubBand(v); }},
}};

template <class Target, size_t count>
const Setting<Target>* settingNamed(const std::array<Setting<Target>, count>& settings,
                                    const QString& name)
{
    const auto it = std::find_if(settings.begin(), settings.end(), [&](const Setting<Target>& s) {
        return name == QLatin1String(s.name);
    });
    return it == settings.end() ? nullptr : &*it;
}

// A parsed declaration, kept until the whole file has been checked.
struct ToolDecl
{
    int line;
    ControlType type;
    QString key;
    QList<Token> attributes;
};

struct BandDecl
{
    int line;
    BandKind kind;
    QString key;
    QList<Token> attributes;
    QList<ToolDecl> tools;
};

class Parser
{
public:
    std::optional<SkinError> parse(const QString& text)
    {
        const QStringList lines = QString(text)
                                      .replace(QLatin1String("\r\n"), QLatin1String("\n"))
                                      .split(QLatin1Char('\n'));
        BandDecl* open = nullptr;
        for (int number = 1; number <= lines.size(); ++number) {
            QList<Token> tokens;
            if (auto problem = tokenize(lines[number - 1], tokens))
                return SkinError{number, *problem};
            if (tokens.isEmpty())
                continue;
            const QString word = tokens.takeFirst().name;
            if (word == QLatin1String("band")) {
                if (open)
                    return SkinError{
                        number,
                        QStringLiteral("band \"%1\" is not closed with \"end\"").arg(open->key)};
                if (tokens.size() < 2 || tokens[0].hasValue || tokens[1].hasValue)
                    return SkinError{number, QStringLiteral("expected: band <key> <kind>")};
                if (!bandKinds().contains(tokens[1].name))
                    return SkinError{
                        number, QStringLiteral("unknown band kind \"%1\"").arg(tokens[1].name)};
                if (keys_.contains(tokens[0].name))
                    return SkinError{
                        number,
                        QStringLiteral("band \"%1\" is declared twice").arg(tokens[0].name)};
                keys_.insert(tokens[0].name);
                bands_.append(BandDecl{
                    number, bandKinds().value(tokens[1].name), tokens[0].name, tokens.mid(2), {}});
                open = &bands_.last();
            } else if (word == QLatin1String("end")) {
                if (!open)
                    return SkinError{number, QStringLiteral("\"end\" without a band")};
                open = nullptr;
            } else if (toolTypes().contains(word)) {
                if (!open)
                    return SkinError{number, QStringLiteral("tool outside a band")};
                const ControlType type = toolTypes().value(word);
                QString key;
                if (!tokens.isEmpty() && !tokens[0].hasValue)
                    key = tokens.takeFirst().name;
                if (key.isEmpty() && type != ControlType::Separator)
                    return SkinError{number, QStringLiteral("%1 needs a key").arg(word)};
                if (!key.isEmpty() && std::any_of(open->tools.begin(), open->tools.end(),
                                                  [&](const ToolDecl& t) { return t.key == key; }))
                    return SkinError{
                        number,
                        QStringLiteral("tool \"%1\" is twice in band \"%2\"").arg(key, open->key)};
                open->tools.append(ToolDecl{number, type, key, tokens});
            } else {
                return SkinError{number, QStringLiteral("unknown word \"%1\"").arg(word)};
            }
        }
        if (open)
            return SkinError{
                open->line,
                QStringLiteral("band \"%1\" is not closed with \"end\"").arg(open->key)};
        if (bands_.isEmpty())
            return SkinError{0, QStringLiteral("declares no band")};
        return std::nullopt;
    }

    std::optional<SkinError> check()
    {
        QHash<QString, int> shortcuts;
        for (const BandDecl& band : bands_)
            for (const ToolDecl& tool : band.tools)
                for (const Token& token : tool.attributes)
                    if (token.name == QLatin1String("shortcut")) {
                        const QString keys = QKeySequence(token.value).toString();
                        if (keys.isEmpty())
                            return SkinError{
                                tool.line,
                                QStringLiteral("shortcut \"%1\" is not a key").arg(token.value)};
                        if (shortcuts.contains(keys))
                            return SkinError{
                                tool.line, QStringLiteral("shortcut %1 is already given on line %2")
                                               .arg(keys)
                                               .arg(shortcuts.value(keys))};
                        shortcuts.insert(keys, tool.line);
                    }
        for (const BandDecl& band : bands_) {
            if (band.kind == BandKind::ChildBand && !hasSetting(band.attributes, "parent"))
                return SkinError{band.line, QStringLiteral("a child band needs parent=")};
            for (const Token& token : band.attributes)
                if (auto problem = checkSetting(bandSettings, token, band.line,
                                                band.kind == BandKind::ChildBand, "band"))
                    return SkinError{band.line, *problem};
            for (const ToolDecl& tool : band.tools)
                if (tool.type == ControlType::DropDown && !hasSetting(tool.attributes, "band"))
                    return SkinError{tool.line, QStringLiteral("a drop-down needs band=")};
            for (const ToolDecl& tool : band.tools)
                for (const Token& token : tool.attributes)
                    if (auto problem = checkSetting(toolSettings, token, tool.line,
                                                    tool.type == ControlType::DropDown, "tool"))
                        return SkinError{tool.line, *problem};
        }
        return checkMenuCycles();
    }

    void build(CommandBar& bar) const
    {
        int nextId = 100;
        for (const BandDecl& decl : bands_) {
            Band* band = bar.addBand(decl.key, decl.kind);
            band->setCaption(decl.key);
            band->setSourceLine(decl.line);
            for (const Token& token : decl.attributes)
                settingNamed(bandSettings, token.name)->apply(*band, token.value);
            for (const ToolDecl& toolDecl : decl.tools) {
                int id = nextId++;
                for (const Token& token : toolDecl.attributes)
                    if (token.name == QLatin1String("id"))
                        id = token.value.toInt();
                Tool probe(bar, toolDecl.key, id, toolDecl.type);
                probe.setCaption(toolDecl.key);
                probe.setMarksAccessKey(true);
                for (const Token& token : toolDecl.attributes)
                    settingNamed(toolSettings, token.name)->apply(probe, token.value);
                if (!toolDecl.key.isEmpty() && !bar.collectionTool(toolDecl.key)) {
                    Tool* shared = bar.addTool(toolDecl.key, id, toolDecl.type);
                    shared->setCaption(probe.caption());
                    shared->setMarksAccessKey(true);
                    shared->setTooltip(probe.tooltip());
                    // A switch's state is the same in every copy of its key.
                    shared->setChecked(probe.checked());
                }
                bar.insertTool(*band, probe);
            }
        }
    }

private:
    static bool isNumber(const QString& value)
    {
        bool ok = false;
        value.toInt(&ok);
        return ok;
    }

    // Whether the token is a setting the band or tool may have, with a value
    // of the right kind.
    template <class Target, size_t count>
    std::optional<QString> checkSetting(const std::array<Setting<Target>, count>& settings,
                                        const Token& token, int line, bool bandsAllowed,
                                        const char* owner) const
    {
        const QString& name = token.name;
        const QString unknown =
            QStringLiteral("unknown %1 setting \"%2\"").arg(QLatin1String(owner), name);
        const Setting<Target>* setting = settingNamed(settings, name);
        if (!setting)
            return unknown;
        switch (setting->value) {
        case Value::Text:
            return token.hasValue ? std::nullopt : std::optional(unknown);
        case Value::Flag:
            return token.hasValue ? std::optional(unknown) : std::nullopt;
        case Value::Number:
            if (!isNumber(token.value))
                return QStringLiteral("%1 must be a whole number").arg(name);
            return std::nullopt;
        case Value::Dock:
            if (!dockAreas().contains(token.value))
                return QStringLiteral("dock must be top, bottom, left or right");
            return std::nullopt;
        case Value::PopupBand: {
            if (!bandsAllowed)
                return unknown;
            const BandDecl* target = find(token.value);
            if (!target || target->kind != BandKind::Popup)
                return QStringLiteral("drop-down opens band \"%1\", which is not a popup band")
                    .arg(token.value);
            return std::nullopt;
        }
        case Value::ParentBand: {
            if (!bandsAllowed)
                return unknown;
            const BandDecl* parent = find(token.value);
            if (!parent || parent->kind != BandKind::SideBar || parent->line > line)
                return QStringLiteral("parent \"%1\" is not a sidebar band declared before")
                    .arg(token.value);
            return std::nullopt;
        }
        }
        return unknown;
    }

    static bool hasSetting(const QList<Token>& tokens, const char* name)
    {
        return std::any_of(tokens.begin(), tokens.end(),
                           [&](const Token& t) { return t.name == QLatin1String(name); });
    }

    const BandDecl* find(const QString& key) const
    {
        const auto it = std::find_if(bands_.begin(), bands_.end(),
                                     [&](const BandDecl& b) { return b.key == key; });
        return it == bands_.end() ? nullptr : &*it;
    }

    static QString opens(const ToolDecl& tool)
    {
        for (const Token& token : tool.attributes)
            if (token.name == QLatin1String("band"))
                return token.value;
        return {};
    }

    // A menu that opens itself, directly or through others, would never end.
    std::optional<SkinError> checkMenuCycles() const
    {
        for (const BandDecl& start : bands_) {
            QSet<QString> seen;
            QList<const BandDecl*> todo{&start};
            while (!todo.isEmpty()) {
                const BandDecl* band = todo.takeLast();
                for (const ToolDecl& tool : band->tools) {
                    const QString target = opens(tool);
                    if (target.isEmpty())
                        continue;
                    if (target == start.key)
                        return SkinError{
                            tool.line,
                            QStringLiteral("menu \"%1\" ends up opening itself").arg(start.key)};
                    if (!seen.contains(target)) {
                        seen.insert(target);
                        todo.append(find(target));
                    }
                }
            }
        }
        return std::nullopt;
    }

    QList<BandDecl> bands_;
    QSet<QString> keys_;
};

} // namespace

std::optional<SkinError> SkinLoader::loadText(CommandBar& bar, const QString& text)
{
    Parser parser;
    // Editors that save UTF-8 with a byte-order mark are common.
    const QString body = text.startsWith(QChar(0xFEFF)) ? text.mid(1) : text;
    if (auto error = parser.parse(body))
        return error;
    if (auto error = parser.check())
        return error;
    parser.build(bar);
    return std::nullopt;
}

std::optional<SkinError> SkinLoader::loadFile(CommandBar& bar, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return SkinError{0, QStringLiteral("cannot be read: %1").arg(file.errorString())};
    const QByteArray bytes = file.readAll();
    const QString text = QString::fromUtf8(bytes);
    if (text.contains(QChar::ReplacementCharacter) || bytes.contains('\0'))
        return SkinError{0, QStringLiteral("is not UTF-8 text")};
    return loadText(bar, text);
}

} // namespace commandbar
