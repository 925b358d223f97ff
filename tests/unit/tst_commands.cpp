// The command table against the shipped skin, the prefix routes and the keys
// of generated tools, and what the dispatcher does with a click.
#include "commandbar/CommandBar.h"
#include "commandbar/SkinLoader.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "core/MainState.h"
#include "core/ToolKeys.h"
#include "support/Fakes.h"
#include "support/TestMain.h"

using namespace platform;
using namespace commandbar;

class CommandsTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void tableAndShippedSkinAgree()
    {
        CommandBar bar;
        QVERIFY(!SkinLoader::loadFile(bar, QStringLiteral(QUB_SKIN_FILE)));
        // Every fixed key stands in some band of the skin, but the edit entry
        // that the translation menu adds at start...
        for (const cmd::CommandInfo& command : cmd::commandTable)
            if (command.id != cmd::Command::EditTranslations)
                QVERIFY2(bar.collectionTool(command.key), command.key);
        // ...and every button of the skin is a command, but the status
        // band's indicators, which only show state.
        const QStringList indicators{"b_blocked", "b_filtered", "b_security"};
        for (const auto& band : bar.bands())
            for (int i = 0; i < band->count(); ++i) {
                const Tool* tool = band->at(i);
                if (tool->type() != ControlType::Button || indicators.contains(tool->key()))
                    continue;
                QVERIFY2(cmd::find(tool->key()), qPrintable(band->key() + "/" + tool->key()));
            }
        QSet<QString> keys;
        for (const cmd::CommandInfo& command : cmd::commandTable)
            keys.insert(command.key);
        QCOMPARE(keys.size(), cmd::commandCount);
    }

    void generatedKeysAndRoutes_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("route");
        QTest::addColumn<int>("number");
        QTest::newRow("tab twelve") << "tabs-12" << int(cmd::Route::Tab) << 12;
        QTest::newRow("tab number then junk") << "tabs-7x" << int(cmd::Route::Tab) << 7;
        QTest::newRow("tab without number") << "tabs-" << int(cmd::Route::Tab) << 0;
        QTest::newRow("blocked third") << "blocked-3" << int(cmd::Route::Blocked) << 3;
        QTest::newRow("proxy is case-sensitive") << "proxy3" << -1 << -1;
        QTest::newRow("fixed key") << "b_back" << -1 << -1;
    }
    void generatedKeysAndRoutes()
    {
        QFETCH(QString, key);
        QFETCH(int, route);
        QFETCH(int, number);
        MainState state;
        CommandBar bar;
        Band* menu = bar.addBand("sub_Any", BandKind::Popup);
        Tool* tool = bar.insertTool(*menu, *bar.addTool(key, 1, ControlType::Button));
        CommandDispatcher commands(state, bar, [](int) { return nullptr; });
        QList<int> reached;
        for (const cmd::RouteInfo& r : cmd::routeTable)
            commands.on(r.id, [&reached, r](const CommandContext&) { reached << int(r.id); });
        commands.dispatch(tool);
        QCOMPARE(reached, route < 0 ? QList<int>{} : QList<int>{route});
        if (route == int(cmd::Route::Tab))
            QCOMPARE(keys::tabIndex(key), number);
        if (route == int(cmd::Route::Blocked))
            QCOMPARE(keys::blockedEntry(key), number);
    }

    void keysReadBackWhatTheyWrite()
    {
        QCOMPARE(keys::tabIndex(keys::tabKey(32767)), 32767);
        QVERIFY(!keys::isTabKey(u"tab_Menu"));
        QCOMPARE(keys::leadingValue(u"  -4 and more"), -4);
        QCOMPARE(keys::leadingValue(u"99999999999"), 0);
    }

    void dispatcherResolvesTheTabAndRunsOneHandler()
    {
        MainState state;
        CommandBar bar;
        QVERIFY(!SkinLoader::loadFile(bar, QStringLiteral(QUB_SKIN_FILE)));
        FakeBrowserView one(1), two(2);
        std::map<int, BrowserView*> views{{1, &one}, {2, &two}};
        CommandDispatcher commands(state, bar, [&views](int index) {
            const auto it = views.find(index);
            return it == views.end() ? nullptr : it->second;
        });
        QList<int> ran;
        commands.on(cmd::Command::CloseTab, [&ran](const CommandContext& c) { ran << c.tab; });
        QTest::ignoreMessage(QtWarningMsg, "command b_close registered twice");
        commands.on(cmd::Command::CloseTab, [&ran](const CommandContext&) { ran << -1; });

        // With no tab shown, a command on a tab does not run.
        bar.reportClick(bar.tool(key::fileMenu, key::closeTab));
        QCOMPARE(ran, QList<int>{});
        state.currentTab = 1;
        state.targetTab = 2;
        bar.reportClick(bar.tool(key::fileMenu, key::closeTab));
        bar.reportClick(bar.tool(key::tabMenu, key::closeTab));
        // A target tab whose view is gone falls back to the shown tab.
        views.erase(2);
        bar.reportClick(bar.tool(key::tabMenu, key::closeTab));
        QCOMPARE(ran, (QList<int>{1, 2, 1}));
        // A key without a handler does nothing, and run() finds the tool itself.
        bar.reportClick(bar.tool(key::fileMenu, "b_saveas"));
        commands.run(cmd::Command::CloseTab);
        QCOMPARE(ran, (QList<int>{1, 2, 1, 1}));

        // Every entry of the shipped tab menu that acts on a tab acts on the
        // tab the menu was opened for.
        const Band* tabMenu = bar.band(key::tabMenu);
        for (int i = 0; i < tabMenu->count(); ++i) {
            const cmd::CommandInfo* command = cmd::find(tabMenu->at(i)->key());
            if (command && command->actsOn != cmd::ActsOn::Nothing)
                QVERIFY2(command->actsOn == cmd::ActsOn::TargetTab, command->key);
        }
    }
};

QUB_TEST_MAIN(CommandsTest)
#include "tst_commands.moc"
