#include "SavedPage.h"

#include <QMimeDatabase>
#include <QSet>
#include <QStringDecoder>
#include <algorithm>
#include <cctype>
#include <functional>
#include <libxml/HTMLparser.h>
#include <libxml/HTMLtree.h>
#include <vector>

namespace quicksaver {

namespace {

// libxml2 writes no control characters, so they go before parsing: the page
// that is read is then the page that is written. A form feed is a blank.
QByteArray withoutControls(QByteArray text)
{
    text.replace('\f', ' ');
    text.removeIf([](char c) { return uchar(c) < 0x20 && c != '\t' && c != '\n' && c != '\r'; });
    return text;
}

const xmlChar* x(const char* s)
{
    return reinterpret_cast<const xmlChar*>(s);
}

bool is(const xmlNode* node, const char* name)
{
    return node->type == XML_ELEMENT_NODE && xmlStrcasecmp(node->name, x(name)) == 0;
}

bool has(xmlNode* node, const char* name)
{
    return xmlHasProp(node, x(name)) != nullptr;
}

QString attr(xmlNode* node, const char* name)
{
    xmlChar* value = xmlGetProp(node, x(name));
    const QString result = QString::fromUtf8(reinterpret_cast<const char*>(value));
    xmlFree(value);
    return result;
}

void setAttr(xmlNode* node, const char* name, const QByteArray& utf8)
{
    xmlSetProp(node, x(name), x(utf8.constData()));
}

void setAttr(xmlNode* node, const char* name, const QString& value)
{
    setAttr(node, name, value.toUtf8());
}

QString content(xmlNode* node)
{
    xmlChar* value = xmlNodeGetContent(node);
    const QString result = QString::fromUtf8(reinterpret_cast<const char*>(value));
    xmlFree(value);
    return result;
}

// A style element's text: written raw by the serializer, and read back as
// markup where the style sits in an <svg>, so it holds no "<" at all (CSS
// reads the escape as the same character in a string).
void setStyleText(xmlNode* style, QString css)
{
    css.replace(QLatin1Char('<'), QLatin1String("\\3c "));
    while (style->children) {
        xmlNode* child = style->children;
        xmlUnlinkNode(child);
        xmlFreeNode(child);
    }
    xmlAddChild(style, xmlNewDocText(style->doc, x(css.toUtf8().constData())));
}

bool relHas(xmlNode* link, const char* word)
{
    const QStringList words = attr(link, "rel").simplified().split(QLatin1Char(' '));
    return words.contains(QLatin1String(word), Qt::CaseInsensitive);
}

// The saved page is a snapshot of what the user saw: scripts already ran into
// the markup, so they (and what showed only without them) go. <base> goes
// because every address is made absolute; a charset or http-equiv <meta> goes
// because the text is now UTF-8 and a refresh or policy would act offline.
bool dropped(xmlNode* e)
{
    return is(e, "script") || is(e, "noscript") || is(e, "base") ||
           (is(e, "meta") && (has(e, "charset") || has(e, "http-equiv")));
}

// True when the attribute's value holds a script address, however it is
// spaced or spelled.
bool namesScript(xmlAttr* a)
{
    xmlChar* raw = xmlNodeListGetString(a->doc, a->children, 1);
    QString value = QString::fromUtf8(reinterpret_cast<const char*>(raw)).toLower();
    xmlFree(raw);
    value.removeIf([](QChar c) { return c.isSpace() || c.unicode() < 0x20; });
    return value.contains(QLatin1String("javascript:")) ||
           value.contains(QLatin1String("vbscript:"));
}

// The attribute naming a resource shown with the page, to be inlined.
const char* shownResource(xmlNode* e)
{
    if (is(e, "img") ||
        (is(e, "input") && attr(e, "type").compare("image", Qt::CaseInsensitive) == 0))
        return "src";
    if (is(e, "video"))
        return "poster";
    if (is(e, "link") && relHas(e, "icon"))
        return "href";
    return nullptr;
}

bool isStylesheet(xmlNode* e)
{
    return is(e, "link") && relHas(e, "stylesheet") && !relHas(e, "alternate");
}

// Attributes that are addresses to follow: made absolute.
const char* const linkAttributes[] = {"href",   "src",  "action",     "formaction",
                                      "poster", "cite", "background", "data"};

// Elements in page order, without the subtrees of dropped ones. A <style>
// holds text, which is rewritten whole, so what libxml2 may have put in it
// as elements is not entered either.
std::vector<xmlNode*> elements(xmlDoc* doc, std::vector<xmlNode*>* drop = nullptr)
{
    std::vector<xmlNode*> found;
    xmlNode* node = xmlDocGetRootElement(doc);
    while (node) {
        const bool gone = node->type == XML_ELEMENT_NODE && dropped(node);
        if (gone && drop)
            drop->push_back(node);
        if (node->type == XML_ELEMENT_NODE && !gone)
            found.push_back(node);
        if (node->children && node->type == XML_ELEMENT_NODE && !gone && !is(node, "style")) {
            node = node->children;
            continue;
        }
        while (node && !node->next)
            node = node->parent && node->parent->type == XML_ELEMENT_NODE ? node->parent : nullptr;
        if (node)
            node = node->next;
    }
    return found;
}

QUrl key(const QUrl& url)
{
    return url.adjusted(QUrl::RemoveFragment);
}

// Nothing for an empty reference: it names no resource.
QUrl resolve(const QUrl& base, const QString& ref)
{
    const QString trimmed = ref.trimmed();
    return trimmed.isEmpty() ? QUrl() : base.resolved(QUrl(trimmed));
}

// The address made absolute; a data: URL, or one that does not parse, as it was.
QString absolute(const QUrl& url, const QString& ref)
{
    if (!url.isValid() || url.scheme() == QLatin1String("data"))
        return ref;
    return url.toString(QUrl::FullyEncoded);
}

// Calls `map` with each address a stylesheet names (url() references, and
// @import targets with import set) and puts a non-null answer in its place as
// url("..."). Strings and comments are read past, so text in them stays.
using CssMap = std::function<QString(const QString& ref, bool import)>;
QString rewriteCss(const QString& css, const CssMap& map)
{
    QString out;
    qsizetype copied = 0;
    bool import = false;
    const qsizetype n = css.size();
    const auto at = [&](qsizetype i, QLatin1String word) {
        return QStringView(css).mid(i, word.size()).compare(word, Qt::CaseInsensitive) == 0;
    };
    const auto stringEnd = [&](qsizetype i) {
        for (qsizetype j = i + 1; j < n; ++j) {
            if (css[j] == QLatin1Char('\\'))
                ++j;
            else if (css[j] == css[i])
                return j + 1;
        }
        return n;
    };
    const auto replace = [&](qsizetype from, qsizetype to, const QString& ref) {
        QString mapped = map(ref, import);
        import = false;
        if (mapped.isNull())
            return;
        mapped.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
            .replace(QLatin1Char('"'), QLatin1String("\\\""))
            .remove(QLatin1Char('\n'));
        out.append(QStringView(css).mid(copied, from - copied));
        out.append(QLatin1String("url(\"")).append(mapped).append(QLatin1String("\")"));
        copied = to;
    };
    for (qsizetype i = 0; i < n;) {
        const QChar c = css[i];
        if (at(i, QLatin1String("/*"))) {
            const qsizetype end = css.indexOf(QLatin1String("*/"), i + 2);
            i = end < 0 ? n : end + 2;
        } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            const qsizetype end = stringEnd(i);
            if (import && end < n)
                replace(i, end, css.mid(i + 1, end - i - 2));
            import = false;
            i = end;
        } else if (at(i, QLatin1String("url("))) {
            qsizetype j = i + 4;
            while (j < n && css[j].isSpace())
                ++j;
            const qsizetype start = j;
            if (j < n && (css[j] == QLatin1Char('"') || css[j] == QLatin1Char('\'')))
                j = stringEnd(j);
            else
                while (j < n && !css[j].isSpace() && !QStringLiteral("()\"'").contains(css[j]))
                    ++j;
            QString ref = css.mid(start, j - start);
            if (ref.startsWith(QLatin1Char('"')) || ref.startsWith(QLatin1Char('\'')))
                ref = ref.mid(1, ref.size() - 2);
            while (j < n && css[j].isSpace())
                ++j;
            if (j < n && css[j] == QLatin1Char(')'))
                replace(i, j + 1, ref);
            i = j + 1;
        } else if (at(i, QLatin1String("@import"))) {
            import = true;
            i += 7;
        } else {
            import = import && c.isSpace();
            ++i;
        }
    }
    return copied == 0 ? css : out.append(QStringView(css).mid(copied));
}

QString sheetText(const Resource& sheet)
{
    const QByteArray bytes = withoutControls(sheet.bytes);
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

QUrl sheetBase(const QUrl& url, const Resource& sheet)
{
    return sheet.finalUrl.isValid() ? sheet.finalUrl : url;
}

// Bytes, not text: a picture may be tens of megabytes.
QByteArray dataUrl(const Resource& resource)
{
    QByteArray type = resource.mimeType.split(';').first().trimmed().toLower();
    const bool valid = type.count('/') == 1 && !type.startsWith('/') && !type.endsWith('/') &&
                       std::all_of(type.begin(), type.end(), [](char c) {
                           return std::isalnum(static_cast<unsigned char>(c)) ||
                                  QByteArrayView("/!#$&^_.+-").contains(c);
                       });
    // A local file comes without a type; an SVG picture shows only with its own.
    if (!valid)
        type = QMimeDatabase()
                   .mimeTypeForFileNameAndData(resource.finalUrl.fileName(), resource.bytes)
                   .name()
                   .toLatin1();
    return "data:" + type + ";base64," + resource.bytes.toBase64();
}

} // namespace

bool fetchable(const QUrl& url, const QUrl& page)
{
    const QString scheme = url.scheme();
    if (scheme == QLatin1String("http") || scheme == QLatin1String("https"))
        return url.isValid() && !url.host().isEmpty();
    return scheme == QLatin1String("file") && page.scheme() == QLatin1String("file");
}

SavedPage::SavedPage(const QByteArray& record, const QUrl& address)
    : address_(address), base_(address)
{
    // The record is the inside of <html>; it is UTF-8 whatever its <meta> says
    // (a broken sequence becomes U+FFFD, as a browser would show it).
    const QByteArray page =
        "<html>" + withoutControls(QString::fromUtf8(record).toUtf8()) + "</html>";
    doc_ = htmlReadMemory(page.constData(), int(qMin<qsizetype>(page.size(), INT_MAX)), nullptr,
                          "UTF-8",
                          HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                              HTML_PARSE_NONET | HTML_PARSE_NODEFDTD | HTML_PARSE_IGNORE_ENC);
    if (!doc_ || !xmlDocGetRootElement(doc_)) {
        xmlFreeDoc(doc_);
        doc_ = htmlNewDocNoDtD(nullptr, nullptr);
        xmlDocSetRootElement(doc_, xmlNewDocNode(doc_, nullptr, x("html"), nullptr));
    }
    std::vector<xmlNode*> gone;
    elements(doc_, &gone);
    for (xmlNode* e : gone)
        if (is(e, "base") && has(e, "href")) {
            const QUrl base = resolve(address, attr(e, "href"));
            if (base.isValid() && base.scheme() != QLatin1String("data") &&
                base.scheme() != QLatin1String("javascript"))
                base_ = base;
            break;
        }
}

SavedPage::~SavedPage()
{
    xmlFreeDoc(doc_);
}

QString SavedPage::title() const
{
    for (xmlNode* head = xmlDocGetRootElement(doc_)->children; head; head = head->next)
        if (is(head, "head"))
            for (xmlNode* e = head->children; e; e = e->next)
                if (is(e, "title"))
                    return content(e).simplified();
    return {};
}

QList<QUrl> SavedPage::wanted(const Resources& got) const
{
    QList<QUrl> urls;
    QSet<QUrl> seen;
    const auto want = [&](const QUrl& url) {
        if (fetchable(url, address_) && !seen.contains(key(url))) {
            seen.insert(key(url));
            urls << key(url);
        }
    };
    const auto listFrom = [&](const QUrl& base) {
        return [&, base](const QString& ref, bool import) {
            if (!import)
                want(resolve(base, ref));
            return QString();
        };
    };
    for (xmlNode* e : elements(doc_)) {
        if (has(e, "style"))
            rewriteCss(attr(e, "style"), listFrom(base_));
        if (is(e, "style"))
            rewriteCss(content(e), listFrom(base_));
        if (const char* name = shownResource(e); name && has(e, name))
            want(resolve(base_, attr(e, name)));
        if (isStylesheet(e) && has(e, "href")) {
            const QUrl url = key(resolve(base_, attr(e, "href")));
            want(url);
            if (const auto sheet = got.constFind(url); sheet != got.constEnd())
                rewriteCss(sheetText(*sheet), listFrom(sheetBase(url, *sheet)));
        }
    }
    return urls;
}

QByteArray SavedPage::render(const Resources& got) const
{
    xmlDoc* doc = xmlCopyDoc(doc_, 1);
    if (!doc)
        return {};
    // A resource that came becomes a data: URL, anything else its absolute
    // address; an @import is left to load from the network.
    const auto local = [&](const QUrl& base, const QString& ref, bool import = false) {
        const QUrl url = resolve(base, ref);
        const auto found = got.constFind(key(url));
        if (import || found == got.constEnd() || !fetchable(url, address_))
            return absolute(url, ref).toUtf8();
        return dataUrl(*found);
    };
    const auto inlineFrom = [&](const QUrl& base) {
        return [&, base](const QString& ref, bool import) {
            return QString::fromUtf8(local(base, ref, import));
        };
    };
    std::vector<xmlNode*> drop;
    for (xmlNode* e : elements(doc, &drop)) {
        // A prefixed name means nothing to a browser's HTML parser, but the
        // saver's own parser reads "st:style" back as a style, whose text it
        // takes raw: written with a dash, it is one plain element to both.
        if (xmlStrchr(e->name, ':'))
            xmlNodeSetName(e, x(QByteArray(reinterpret_cast<const char*>(e->name))
                                    .replace(':', '-')
                                    .constData()));
        std::vector<xmlAttr*> unwanted;
        for (xmlAttr* a = e->properties; a; a = a->next)
            // A frame's inline document would run its own scripts; a script
            // address runs under any attribute name (xlink:href, an
            // animation's to or values).
            if (xmlStrncasecmp(a->name, x("on"), 2) == 0 || namesScript(a) ||
                xmlStrcasecmp(a->name, x("srcset")) == 0 ||
                xmlStrcasecmp(a->name, x("sizes")) == 0 || xmlStrcasecmp(a->name, x("srcdoc")) == 0)
                unwanted.push_back(a);
        for (xmlAttr* a : unwanted)
            xmlRemoveProp(a);
        if (has(e, "style"))
            setAttr(e, "style", rewriteCss(attr(e, "style"), inlineFrom(base_)));
        if (is(e, "style"))
            setStyleText(e, rewriteCss(content(e), inlineFrom(base_)));
        const char* shown = shownResource(e);
        if (shown && has(e, shown))
            setAttr(e, shown, local(base_, attr(e, shown)));
        if (isStylesheet(e) && has(e, "href") && !e->children) {
            const QUrl url = key(resolve(base_, attr(e, "href")));
            if (const auto sheet = got.constFind(url); sheet != got.constEnd()) {
                xmlNode* style = xmlNewDocNode(doc, nullptr, x("style"), nullptr);
                if (has(e, "media"))
                    setAttr(style, "media", attr(e, "media"));
                setStyleText(style,
                             rewriteCss(sheetText(*sheet), inlineFrom(sheetBase(url, *sheet))));
                xmlReplaceNode(e, style);
                xmlFreeNode(e);
                continue;
            }
        }
        for (const char* name : linkAttributes) {
            if ((shown && qstrcmp(name, shown) == 0) || !has(e, name) ||
                (qstrcmp(name, "data") == 0 && !is(e, "object")))
                continue;
            const QString ref = attr(e, name);
            const QUrl url = resolve(base_, ref);
            if (url.scheme() == QLatin1String("javascript"))
                xmlUnsetProp(e, x(name));
            else if (!ref.startsWith(QLatin1Char('#')))
                setAttr(e, name, absolute(url, ref));
        }
    }
    for (xmlNode* e : drop) {
        xmlUnlinkNode(e);
        xmlFreeNode(e);
    }

    xmlNode* root = xmlDocGetRootElement(doc);
    xmlNode* head = root->children;
    while (head && !is(head, "head"))
        head = head->next;
    if (!head) {
        head = xmlNewDocNode(doc, nullptr, x("head"), nullptr);
        root->children ? xmlAddPrevSibling(root->children, head) : xmlAddChild(root, head);
    }
    // Whatever got past the above, the saved page runs no script of its own.
    xmlNode* policy = xmlNewDocNode(doc, nullptr, x("meta"), nullptr);
    xmlSetProp(policy, x("http-equiv"), x("Content-Security-Policy"));
    xmlSetProp(policy, x("content"), x("script-src 'none'; object-src 'none'"));
    head->children ? xmlAddPrevSibling(head->children, policy) : xmlAddChild(head, policy);
    xmlNode* meta = xmlNewDocNode(doc, nullptr, x("meta"), nullptr);
    xmlSetProp(meta, x("charset"), x("utf-8"));
    xmlAddPrevSibling(head->children, meta);
    xmlCreateIntSubset(doc, x("html"), nullptr, nullptr);

    xmlOutputBuffer* out = xmlAllocOutputBuffer(nullptr);
    htmlDocContentDumpFormatOutput(out, doc, "UTF-8", 0);
    xmlFreeDoc(doc);
    const QByteArray html(reinterpret_cast<const char*>(xmlOutputBufferGetContent(out)),
                          qsizetype(xmlOutputBufferGetSize(out)));
    xmlOutputBufferClose(out);
    return html;
}

} // namespace quicksaver
