// Writes what the program writes, over and over, with the program's own code,
// until it is killed: the settings at exit (every switch on, then every
// switch off), a typed address, a line of the last pages. Each round n types
// "http://typed-n.example/" and appends "http://page-n.example/", numbering on
// from the lines already in "LastPages.ini".
#include "app/LastPages.h"
#include "app/Settings.h"
#include "commandbar/CommandBar.h"
#include "commandbar/SkinLoader.h"
#include "core/Keys.h"
#include "core/Switches.h"
#include "net/ProxyMenu.h"
#include "platform/ConnectionHelper.h"
#include "platform/Dialogs.h"
#include "platform/UserRegistry.h"
#include "proxy/ForwardingProxy.h"

#include <QCoreApplication>
#include <QFile>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 4)
        return 2;
    const QString appDir = args[1];
    commandbar::CommandBar bar;
    if (commandbar::SkinLoader::loadFile(bar, args[3]))
        return 2;
    proxy::ForwardingProxy proxy;
    platform::QtDialogs dialogs;
    platform::ConnectionHelper connection(appDir, proxy, dialogs);
    ProxyMenu proxies(bar, connection);
    const Settings settings(appDir, bar, proxies);
    const platform::UserRegistry registry(args[2]);
    const LastPages lastPages(appDir);

    QFile existing(lastPages.fileName());
    int n = existing.open(QIODevice::ReadOnly) ? existing.readAll().count('\n') : 0;
    for (;;) {
        ++n;
        for (const cmd::CommandInfo& command : cmd::commandTable)
            switches::set(bar, command.id, n % 2);
        settings.save();
        platform::recordTypedUrl(registry, QStringLiteral("http://typed-%1.example/").arg(n));
        lastPages.append(QStringLiteral("http://page-%1.example/").arg(n));
    }
}
