// "Proxies.txt" of any content: no crash; the Proxy menu holds "Empty", a
// separator and one entry per listed line, exactly one checked and never a
// greyed one (a line that names no usable proxy); every entry that parses
// names a host and a port.
#include "FuzzSupport.h"
#include "commandbar/Band.h"
#include "commandbar/CommandBar.h"
#include "commandbar/SkinLoader.h"
#include "core/Keys.h"
#include "net/ProxyMenu.h"
#include "platform/ConnectionHelper.h"
#include "platform/Dialogs.h"
#include "proxy/ForwardingProxy.h"
#include "proxy/ProxyEntry.h"

#include <QCoreApplication>
#include <QFileInfo>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static int argc = 1;
    static char name[] = "fuzz_proxylist";
    static char* argv[] = {name, nullptr};
    static QCoreApplication app(argc, argv);
    static proxy::ForwardingProxy proxy;
    static platform::QtDialogs dialogs;
    const QString path = fuzz::scratchFile(platform::ConnectionHelper::listName);
    fuzz::writeFile(path, QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    platform::ConnectionHelper connection(QFileInfo(path).absolutePath() + '/', proxy, dialogs);
    commandbar::CommandBar bar;
    if (commandbar::SkinLoader::loadText(bar, "band sub_Proxylist popup caption=\"Proxy\"\nend\n"))
        abort();
    ProxyMenu menu(bar, connection);
    const QStringList entries = connection.proxies();
    menu.start(entries.value(0));
    const commandbar::Band* band = bar.band(key::proxyMenu);
    if (band->count() != entries.size() + 2)
        abort();
    int checked = 0;
    for (int i = 0; i < band->count(); ++i) {
        checked += band->at(i)->checked() ? 1 : 0;
        if (band->at(i)->checked() && !band->at(i)->enabled())
            abort();
    }
    if (checked != 1)
        abort();
    for (const QString& entry : entries)
        if (const auto parsed = proxy::ProxyEntry::parse(entry))
            if (parsed->host.isEmpty() || parsed->port == 0)
                abort();
    return 0;
}
