#include "Language.h"
#include "commandbar/CommandBar.h"
#include "core/Keys.h"
#include "platform/ini/ProfileFile.h"

namespace {
constexpr QLatin1String section{"QUB_Main"};
}

QString Language::text(const QString& key) const
{
    return platform::ReadIniString(fileName(), section, key);
}

QString Language::apply(commandbar::CommandBar& bar, const QString& version)
{
    // Hundreds of keys: the file is read once for all of them.
    const platform::IniSectionReader file(fileName(), section);
    auto text = [&file](const QString& key) { return file.text(key); };
    auto caption = [&text](commandbar::Tool& tool) {
        if (const QString value = text(tool.key()); !value.isEmpty())
            tool.setCaption(value);
        if (const QString tip = text(QStringLiteral("tip_") + tool.key()); !tip.isEmpty())
            tool.setTooltip(tip);
    };
    for (const auto& band : bar.bands()) {
        if (!band->key().contains(QLatin1String("sub")))
            if (const QString value = text(band->key()); !value.isEmpty())
                band->setCaption(value);
        for (int i = 0; i < band->count(); ++i)
            caption(*band->at(i));
    }
    for (const auto& tool : bar.tools())
        caption(*tool);

    if (commandbar::Tool* security = bar.tool(key::statusBar, key::securityTool)) {
        if (!skinSecurityLabel_)
            skinSecurityLabel_ = security->tag();
        // The label of an unencrypted page is the tool's own caption in this
        // language, so that no state keeps the skin's English.
        QString tag = text(QLatin1String(key::securityTool));
        if (tag.isEmpty())
            tag = *skinSecurityLabel_;
        for (int n = 1; n <= 3; ++n)
            tag += QLatin1Char('|') + text(QString::number(n) + QLatin1String(key::securityTool));
        security->setTag(tag);
    }

    QString title = text(QStringLiteral("QUB_TITLE"));
    title.replace(QLatin1String("{V}"), version);
    title.replace(QLatin1String("{N}"), QLatin1String("QUB-BROWSER"));
    return title;
}
