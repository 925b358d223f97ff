#include "NetscapeBookmarks.h"

#include <libxml/HTMLparser.h>
#include <libxml/tree.h>

namespace {

QString textOf(xmlNode* node)
{
    xmlChar* content = xmlNodeGetContent(node);
    QString text = QString::fromUtf8(reinterpret_cast<const char*>(content)).simplified();
    xmlFree(content);
    return text;
}

QString attribute(xmlNode* node, const char* name)
{
    xmlChar* value = xmlGetProp(node, reinterpret_cast<const xmlChar*>(name));
    QString text = QString::fromUtf8(reinterpret_cast<const char*>(value)).trimmed();
    xmlFree(value);
    return text;
}

bool named(xmlNode* node, const char* name)
{
    return node->type == XML_ELEMENT_NODE &&
           xmlStrcasecmp(node->name, reinterpret_cast<const xmlChar*>(name)) == 0;
}

// Walks the parsed tree in document order: a heading makes a folder that
// the next list fills, a link a bookmark in the folder whose list is open.
class Reader
{
public:
    Reader(Bookmark& root, int maxDepth) : maxDepth_(maxDepth) { open_.push_back({&root, 0}); }

    // False when the walk must not go into the node's children.
    bool enter(xmlNode* node)
    {
        if (named(node, "h3")) {
            pending_ = {add({textOf(node), {}, true, {}}), open_.back().depth + 1};
            return false;
        }
        if (named(node, "a")) {
            pending_ = {};
            const QString address = attribute(node, "href");
            if (!address.isEmpty())
                add({textOf(node), address, false, {}});
            return false;
        }
        if (named(node, "dl")) {
            // A list that follows no heading belongs to the folder around it,
            // as does the list of a folder already as deep as folders go.
            open_.push_back(pending_.folder && pending_.depth < maxDepth_ ? pending_
                                                                          : open_.back());
            pending_ = {};
        }
        return !named(node, "h1") && !named(node, "title") && !named(node, "head");
    }

    void leave(xmlNode* node)
    {
        if (named(node, "dl") && open_.size() > 1)
            open_.pop_back();
    }

private:
    struct Open
    {
        Bookmark* folder = nullptr;
        int depth = 0;
    };

    Bookmark* add(Bookmark entry)
    {
        // Entries go only into the innermost open folder, so the lists of the
        // folders around it, and the pointers to them, never move meanwhile.
        std::vector<Bookmark>& into = open_.back().folder->children;
        into.push_back(std::move(entry));
        return &into.back();
    }

    int maxDepth_;
    std::vector<Open> open_;
    Open pending_;
};

void appendEscaped(QByteArray& out, const QString& text)
{
    out += text.toHtmlEscaped().toUtf8();
}

} // namespace

Bookmark readNetscapeBookmarks(const QByteArray& html, int maxDepth)
{
    Bookmark root;
    root.folder = true;
    const bool utf8 = QString::fromUtf8(html).toUtf8() == html;
    htmlDocPtr document =
        htmlReadMemory(html.constData(), int(std::min<qsizetype>(html.size(), INT_MAX)), nullptr,
                       utf8 ? "UTF-8" : nullptr,
                       HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                           HTML_PARSE_NONET | XML_PARSE_HUGE);
    if (!document)
        return root;
    Reader reader(root, maxDepth);
    xmlNode* const top = xmlDocGetRootElement(document);
    xmlNode* node = top;
    while (node) {
        if (reader.enter(node) && node->children) {
            node = node->children;
            continue;
        }
        // Up until there is a next sibling, leaving each finished element.
        while (node) {
            reader.leave(node);
            if (node == top) {
                node = nullptr;
            } else if (node->next) {
                node = node->next;
                break;
            } else {
                node = node->parent;
            }
        }
    }
    xmlFreeDoc(document);
    return root;
}

static void writeFolder(QByteArray& out, const Bookmark& folder, int depth)
{
    const QByteArray indent(qsizetype(4) * depth, ' ');
    out += indent + "<DL><p>\n";
    for (const Bookmark& entry : folder.children) {
        out += indent + "    <DT>";
        if (entry.folder) {
            out += "<H3>";
            appendEscaped(out, entry.name);
            out += "</H3>\n";
            writeFolder(out, entry, depth + 1);
        } else {
            out += "<A HREF=\"";
            appendEscaped(out, entry.address);
            out += "\">";
            appendEscaped(out, entry.name);
            out += "</A>\n";
        }
    }
    out += indent + "</DL><p>\n";
}

QByteArray writeNetscapeBookmarks(const Bookmark& root)
{
    QByteArray out = "<!DOCTYPE NETSCAPE-Bookmark-file-1>\n"
                     "<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=UTF-8\">\n"
                     "<TITLE>Bookmarks</TITLE>\n"
                     "<H1>Bookmarks</H1>\n";
    writeFolder(out, root, 0);
    return out;
}
