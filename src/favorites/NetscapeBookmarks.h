#pragma once
// The Netscape bookmark file, the HTML form every browser imports and
// exports: folders are <H3> headings each followed by a <DL> list of their
// entries, bookmarks are <A HREF> links. Read with libxml2's HTML parser,
// which takes the loose markup browsers write (unclosed <DT> and <p>) and any
// damage without complaint; the tree is walked without recursion, so no
// nesting can exhaust the stack.
#include <QByteArray>
#include <QString>
#include <vector>

struct Bookmark
{
    QString name;
    // Empty for a folder.
    QString address;
    bool folder = false;
    std::vector<Bookmark> children;
};

// The entries of the file as a folder without a name; folders nested deeper
// than maxDepth keep their entries in the deepest folder kept.
Bookmark readNetscapeBookmarks(const QByteArray& html, int maxDepth);
QByteArray writeNetscapeBookmarks(const Bookmark& root);
