#include "LinksPage.h"
#include "commandbar/Tool.h"
#include "core/CommandDispatcher.h"
#include "platform/Dialogs.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Tabs.h"

#include <QPointer>

namespace {

// The entries are the page's to name, tag included: nothing they become may
// run, load or style anything.
constexpr QLatin1String guard{
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
    "base-uri 'none'; form-action 'none'\">"};

QString escaped(const QString& text)
{
    QString out = text.toHtmlEscaped();
    // A NUL is read as a replacement character by some parsers and as the
    // end of the text by others: written as what a browser reads.
    return out.replace(u'\'', QLatin1String("&#39;")).replace(QChar(0), QChar(0xFFFD));
}

// Tag names come from the page's own elements; anything but a plain name of
// a tag's length (some parsers cut longer ones, and read the rest as an
// attribute) is written as an anchor.
QString tagName(const QString& tag)
{
    if (tag.size() > 32)
        return QStringLiteral("A");
    for (QChar c : tag)
        if (!c.isLetterOrNumber() && c != u'-' && c != u'_' && c != u':' && c != u'.')
            return QStringLiteral("A");
    return tag.isEmpty() ? QStringLiteral("A") : tag;
}

} // namespace

QString linksPageMarkup(const QString& address, const platform::PageLinks& documents,
                        const QString& filter)
{
    const QString wanted = filter.isEmpty() ? QStringLiteral("://") : filter;
    QString page = guard + QStringLiteral("<HTML><html><head><title>") + escaped(address) +
                   QStringLiteral("</Title></head>\n<body>\n");
    int counter = 0;
    for (const QList<platform::PageLink>& links : documents)
        for (const platform::PageLink& link : links) {
            if (!link.href.contains(wanted, Qt::CaseInsensitive))
                continue;
            const QString tag = tagName(link.tag);
            const QString href = escaped(link.href);
            page +=
                QStringLiteral("<center><h>%1.&nbsp&nbsp&nbsp<%2 %3='%4'>%4</%2></h></center> \n")
                    .arg(QString::number(++counter), tag,
                         link.tag == QLatin1String("A") ? QStringLiteral("href")
                                                        : QStringLiteral("src"),
                         href);
        }
    return page + QStringLiteral("</body></html></HTML>\n");
}

LinksPage::LinksPage(Tabs& tabs, platform::Dialogs& dialogs, CommandDispatcher& commands)
    : tabs_(tabs)
{
    commands.on(cmd::Command::ViewLinks, [this](const CommandContext& c) { show(*c.view); });
    commands.on(cmd::Command::ViewLinksEndingWith, [this, &dialogs](const CommandContext& c) {
        filter_ = dialogs.inputText(c.tool.caption(), QStringLiteral(".htm"));
        if (!filter_.isEmpty())
            show(*c.view);
    });
}

void LinksPage::show(platform::BrowserView& source)
{
    const QString filter = std::exchange(filter_, {});
    const QString address = source.locationUrl();
    const int index = tabs_.newTab(QStringLiteral("about:blank"), true);
    if (!index || !source.hasDocument() || address.isEmpty())
        return;
    QPointer<platform::BrowserView> target = tabs_.view(index);
    source.document().collectLinks([target, address, filter](const platform::PageLinks& links) {
        if (target)
            target->document().write(linksPageMarkup(address, links, filter));
    });
}
