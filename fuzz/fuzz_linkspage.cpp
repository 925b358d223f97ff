// The links page of any links a hostile page could name (the filter, the
// page's address, then a tag line and an address line per link, a blank line
// between documents): read back as a browser would, it holds the guarding
// policy first, and every element the page named carries its one address and
// no other attribute, so no entry can add a handler or a style.
#include "FuzzSupport.h"
#include "commands/LinksPage.h"
#include "support/HtmlQuery.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QList<QByteArray> lines =
        QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)).split('\n');
    const QString filter = QString::fromUtf8(lines.value(0));
    const QString address = QString::fromUtf8(lines.value(1));
    platform::PageLinks documents(1);
    for (qsizetype i = 2; i < lines.size(); i += 2) {
        if (lines[i].isEmpty()) {
            documents.emplace_back();
            --i;
            continue;
        }
        documents.back().append(
            {QString::fromUtf8(lines[i]), QString::fromUtf8(lines.value(i + 1))});
    }
    const QByteArray page = linksPageMarkup(address, documents, filter).toUtf8();
    const auto policy = selectInPage(page, "/html/head/meta[1]/@content");
    if (!policy || policy->value(0) != "default-src 'none'; base-uri 'none'; form-action 'none'")
        abort();
    if (!selectInPage(page, "/html/body//*[@*][count(@*) != 1 or not(@href or @src)]")->isEmpty())
        abort();
    return 0;
}
