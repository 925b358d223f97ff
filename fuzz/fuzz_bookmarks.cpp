// A bookmark file from anywhere: no crash, no folder deeper than asked, every
// name made into a file name that stays in its folder, and what we write out
// reads back as the same tree.
#include "FuzzSupport.h"
#include "favorites/FavouritesTransfer.h"

#include <cstdio>

namespace {

constexpr int depthLimit = 8;

int depthOf(const Bookmark& folder)
{
    int deepest = 0;
    for (const Bookmark& entry : folder.children)
        if (entry.folder)
            deepest = std::max(deepest, depthOf(entry) + 1);
    return deepest;
}

bool sameTree(const Bookmark& a, const Bookmark& b)
{
    if (a.name != b.name || a.address != b.address || a.folder != b.folder ||
        a.children.size() != b.children.size())
        return false;
    for (size_t i = 0; i < a.children.size(); ++i)
        if (!sameTree(a.children[i], b.children[i]))
            return false;
    return true;
}

void print(const Bookmark& folder, const QString& indent = {})
{
    for (const Bookmark& entry : folder.children) {
        std::fprintf(stderr, "%s[%s] %s\n", qPrintable(indent), qPrintable(entry.name),
                     qPrintable(entry.address));
        print(entry, indent + "  ");
    }
}

bool safeNames(const Bookmark& folder)
{
    for (const Bookmark& entry : folder.children) {
        const QString name = FavouritesTransfer::fileName(entry.name);
        if (name.isEmpty() || name.contains('/') || name.contains(QChar(0)) ||
            name.startsWith('.') || name.toUtf8().size() > 200 || !safeNames(entry))
            return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray html(reinterpret_cast<const char*>(data), qsizetype(size));
    const Bookmark tree = readNetscapeBookmarks(html, depthLimit);
    if (depthOf(tree) > depthLimit || !safeNames(tree))
        abort();
    const Bookmark again = readNetscapeBookmarks(writeNetscapeBookmarks(tree), depthLimit);
    if (!sameTree(tree, again)) {
        print(tree);
        std::fprintf(stderr, "--- read back as\n");
        print(again);
        abort();
    }
    return 0;
}
