#pragma once
// Reads a page the way the quick saver does (libxml2's HTML parser) and picks
// out what an XPath expression selects: for the saver's tests and fuzz target.
#include <QStringList>
#include <libxml/HTMLparser.h>
#include <libxml/xpath.h>
#include <optional>

// The text of each selected node, in page order; nothing when the page does
// not parse at all.
inline std::optional<QStringList> selectInPage(const QByteArray& html, const char* path)
{
    xmlDoc* doc = htmlReadMemory(html.constData(), int(html.size()), nullptr, "UTF-8",
                                 HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                                     HTML_PARSE_NONET);
    if (!doc || !xmlDocGetRootElement(doc)) {
        xmlFreeDoc(doc);
        return std::nullopt;
    }
    QStringList values;
    xmlXPathContext* context = xmlXPathNewContext(doc);
    xmlXPathObject* found = xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(path), context);
    for (int i = 0; found && found->nodesetval && i < found->nodesetval->nodeNr; ++i) {
        xmlChar* text = xmlNodeGetContent(found->nodesetval->nodeTab[i]);
        values << QString::fromUtf8(reinterpret_cast<const char*>(text));
        xmlFree(text);
    }
    xmlXPathFreeObject(found);
    xmlXPathFreeContext(context);
    xmlFreeDoc(doc);
    return values;
}
