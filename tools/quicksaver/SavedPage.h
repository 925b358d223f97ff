#pragma once
// A page the browser hands to the quick saver: the record (the innerHTML of
// the page's root element) parsed with libxml2's HTML parser, the addresses of
// the pictures, icons and stylesheets it needs, and the page written whole,
// with what was fetched inlined as data: URLs.
#include <QByteArray>
#include <QHash>
#include <QList>
#include <QUrl>

using xmlDoc = struct _xmlDoc;

namespace quicksaver {

struct Resource
{
    QByteArray bytes;
    QByteArray mimeType; // the Content-Type as it came
    QUrl finalUrl;       // after redirects, for the addresses inside a stylesheet
};
// Fetched resources by address (without fragment); a failed one is absent.
using Resources = QHash<QUrl, Resource>;

class SavedPage
{
public:
    SavedPage(const QByteArray& record, const QUrl& address);
    ~SavedPage();
    SavedPage(const SavedPage&) = delete;
    SavedPage& operator=(const SavedPage&) = delete;

    // The first <title> of the head, whitespace collapsed.
    QString title() const;
    // What relative addresses resolve against: <base href>, else the address.
    QUrl base() const { return base_; }
    // What the page needs fetched, in page order, given what has come: its
    // pictures, icons and stylesheets, and after each stylesheet that came
    // what that names. Only addresses the saver may fetch, each once.
    QList<QUrl> wanted(const Resources& got) const;
    // The whole page in UTF-8; what did not come stays as its absolute address.
    QByteArray render(const Resources& got) const;

private:
    QUrl address_;
    QUrl base_;
    xmlDoc* doc_ = nullptr;
};

// http and https always; file: only for a page that is itself a file.
bool fetchable(const QUrl& url, const QUrl& page);

} // namespace quicksaver
