#pragma once
// A main window's parts without a window: settings, language, proxies, tab
// strip and exit over a temporary program folder and the shipped skin.
#include "app/AddressToolWidth.h"
#include "app/CommandLine.h"
#include "app/ExitFlow.h"
#include "app/Language.h"
#include "app/LastPages.h"
#include "app/Settings.h"
#include "commandbar/CommandBar.h"
#include "commandbar/SkinLoader.h"
#include "core/Keys.h"
#include "net/ProxyMenu.h"
#include "platform/ClickHook.h"
#include "platform/ConnectionHelper.h"
#include "platform/ini/ProfileFile.h"
#include "proxy/ForwardingProxy.h"
#include "support/Fakes.h"
#include "support/Files.h"
#include "tabs/TabStrip.h"

#include <QTemporaryDir>

struct Frame
{
    QTemporaryDir dir;
    QString appDir = dir.path() + '/';
    MainState state;
    commandbar::CommandBar bar;
    ScriptedDialogs dialogs;
    proxy::ForwardingProxy proxy;
    platform::ConnectionHelper connection{appDir, proxy, dialogs};
    ProxyMenu proxies{bar, connection};
    Settings settings{appDir, bar, proxies};
    Language language{platform::ProgramFolder(appDir)};
    FakeViewFactory factory;
    FakeStage stage;
    TabStrip tabs{state, bar, factory, stage};
    SettableClock clock;
    platform::ClickHook hook{clock};
    ExitFlow exit{state, tabs, language, dialogs, clock};

    Frame()
    {
        state.folder = platform::ProgramFolder(appDir);
        addShutdownSteps(exit, settings, hook, appDir);
        commandbar::SkinLoader::loadFile(bar, QStringLiteral(QUB_SKIN_FILE));
    }
    bool checked(const QString& band, const QString& tool)
    {
        return bar.tool(band, tool)->checked();
    }
    QString ini() { return QString::fromUtf8(readFile(appDir + "Browser.ini")); }
};
