// A favourites folder holding one shortcut file and an order file of any
// content (the first line of the input is the order, the rest the shortcut):
// no crash, the shortcut listed once, and the address read holds no line
// break.
#include "FuzzSupport.h"
#include "favorites/FavouritesScan.h"
#include "favorites/FolderOrder.h"
#include "favorites/InternetShortcut.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QList<QByteArray> parts = fuzz::split(data, size, 2);
    const QString shortcut = fuzz::scratchFile("Page.url");
    const QString folder = shortcut.left(shortcut.lastIndexOf('/'));
    fuzz::writeFile(folder + '/' + FolderOrder::fileName, parts[0]);
    fuzz::writeFile(shortcut, parts[1]);
    const FavouritesScan scan = FavouritesScan::read(folder);
    if (scan.favouriteCount() != 1 || scan.path(1) != shortcut)
        abort();
    if (InternetShortcut::address(scan.path(1)).contains('\n'))
        abort();
    return 0;
}
