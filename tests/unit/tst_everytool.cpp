// Every command of the table and every kind of generated entry, clicked
// through its tool in the composed main window on fake views, has the effect
// it is there for. The rows are the command and route tables; a key with no
// entry in effects() fails, so no command comes in without saying what it does.
#include "support/EveryToolWindow.h"
#include "support/TestMain.h"

namespace {

struct Effect
{
    Probe probe;
    QStringList expected;
    Step before = {};
    // For a route: the generated tool to click when not the first of its kind.
    QString tool = {};
};

const std::map<QString, Effect>& effects()
{
    using P = PrivateData;
    static const std::map<QString, Effect> table = {
        {"b_newt", {tabs, newTabAt({})}},
        {"b_new2", {tabs + told, newTabAt({}) << "3 home"}},
        {"b_new3", {tabs, newTabAt(second)}},
        {"spe_sNew1",
         {tabs, newTabAt("http://co.test/"),
          [](Window& w) { w.p->net.channel().setText("http://co.test/"); }}},
        {"b_back", {told, {"2 back"}}},
        {"b_forward", {told, {"2 forward"}}},
        {"b_stop", {told, {"2 stop"}}},
        {"b_stopall",
         {told + window,
          {"1 stop", "2 stop"},
          [](Window& w) { w.p->progressDisplay->info()->setText("2"); }}},
        {"b_refresh", {told, {"2 refresh"}}},
        {"b_home", {told, {"2 home"}}},
        {"b_saveas",
         {told,
          {"2 save as /saved/page.mht"},
          [](Window& w) { w.app.dialogs.savePaths = {"/saved/page.mht"}; }}},
        {"b_pageset", {told, {"2 page setup"}}},
        {"b_preview", {told, {"2 print preview"}}},
        {"b_print", {told, {"2 print"}}},
        {"b_close", {tabs, {"*1 " + start}}},
        {"b_quit",
         {asked + window,
          {"Do you want to close QUB-BROWSER and all its tabs?"},
          [](Window& w) { w.app.dialogs.answers = {Dialogs::Answer::Cancel}; }}},
        {"b_property",
         {asked + told,
          {"Properties", "2 ask contentType"},
          pageAnswers(R"({"type":"text/html"})")}},
        {"b_offline",
         {window + checks,
          barChecks + QStringList{"offline", "sub_File/b_offline", "sb_Status/b_offline"}}},
        {"b_closeall1", {tabs, {"*2 " + second}}},
        {"b_closeall2", {tabs, {"*3 (blank)"}}},
        {"b_reopenclosed",
         {tabs,
          {"1 " + start, "2 " + second, "*4 http://closed.test/"},
          [](Window& w) { w.p->tabs.closeTab(w.p->tabs.newTab("http://closed.test/", true)); }}},
        {"b_selectall", {told, {"2 selectall"}}},
        {"b_cut", {told, {"2 cut"}}},
        {"b_copy", {told, {"2 copy"}}},
        {"b_paste", {told, {"2 paste"}}},
        {"b_del", {told, {"2 delete"}}},
        {"b_undo", {told, {"2 undo"}}},
        {"b_redo", {told, {"2 redo"}}},
        {"b_find", {shown, {"find bar"}}},
        {"b_source", {tabs, newTabAt("view-source:" + second)}},
        {"b_biggest", {zoom, {"4"}, unzoomed}},
        {"b_big", {zoom, {"3"}, unzoomed}},
        {"b_normal", {zoom, {"2"}, unzoomed}},
        {"b_small", {zoom, {"1"}, unzoomed}},
        {"b_smallest", {zoom, {"0"}, unzoomed}},
        {"b_fullscreen",
         {window + checks,
          barChecks + QStringList{"full screen", "hidden mnu_Main", "hidden sb_Status",
                                  "floating tb_Main", "sub_View/b_fullscreen",
                                  "tb_Main/b_fullscreen"}}},
        {"b_addfav",
         {asked + favourites,
          {"Add Favorite", "Fav http://fav.test/", "Second Page " + second},
          answerDialog(true)}},
        {"b_orgfav", {asked, {"Organise Favourites"}, answerDialog(false)}},
        {"b_go",
         {told + keptTyped,
          {"2 navigate http://go.test/", "typed http://go.test/"},
          [](Window& w) { w.p->addressBox->setEditText("http://go.test/"); }}},
        {"b_scrollon", {told, {"2 ask scroll"}}},
        {"b_iconon", {on + icons, barsOn + QStringList{"b_iconon", "Fav.url"}}},
        {"b_opInternet", {shown + window, {"options 0", "disabled"}}},
        {"b_viewlinks",
         {tabs + written,
          newTabAt("about:blank") +
              QStringList{"title " + second, "http://a.test/page.htm", "http://b.test/picture.png"},
          pageLinks}},
        {"b_delcookie", {cleared, {QString::number(P::Cookies)}}},
        {"b_deltempfiles", {cleared, {QString::number(P::Cache)}}},
        {"b_delhistory",
         {cleared + typed,
          {QString::number(P::History), "list About:Blank", "typed ", "known ", "shown " + second},
          [](Window& w) {
              w.p->addressBox->addItem(start);
              w.p->addressCompleter.addAddress(start);
              w.p->addressBox->setEditText(second);
              QTest::keyClick(w.p->addressBox, Qt::Key_Return);
          }}},
        {"b_emailall", {opened, {"mailto:"}}},
        {"b_sendemail", {opened, {"mailto:?subject=&body="}}},
        {"b_sendaddr",
         {opened, {"mailto:?subject=Second%20Page&body=http%3A%2F%2Fsecond.test%2F"}}},
        {"b_fastsave",
         {told + opened + file("SavedFiles/QuickSave.dat"),
          {"2 ask innerHTML", "./qsexdll url:" + second, "<body>Saved</body>"},
          pageAnswers("<body>Saved</body>")}},
        {"b_openfile",
         {asked + told + keptTyped,
          {"*.HTML;*.HTM|*.HTML;*.HTM|*.XML;*.SML|*.XML;*.SML|*.MHT;*.MHT|*.MHT;*.MHT|*.*|*.*",
           "2 navigate /pages/a.htm", "typed "},
          openFile("/pages/a.htm")}},
        {"b_opengetbar", {shown + on, barsOn + QStringList{"companion", "b_opengetbar"}}},
        {"b_setup", {shown, {"text ./Proxies.txt: proxy.test:8080"}}},
        {"b_toolsbarok", {window + on, {"hidden tb_Main", "b_addrok", "b_statusok"}}},
        {"b_addrok", {window + on, {"hidden tb_Addressbar", "b_toolsbarok", "b_statusok"}}},
        {"b_statusok", {window + on, {"hidden sb_Status", "b_toolsbarok", "b_addrok"}}},
        {"b_refreshall",
         {told, {"1 refresh", "2 refresh"}, [](Window& w) { w.p->tabs.newTab({}, false); }}},
        {"b_viewspecial",
         {asked + tabs + written,
          QStringList{"Links &Ending With... [.htm]", "title " + second, "http://a.test/page.htm"} +
              newTabAt("about:blank"),
          [](Window& w) {
              pageLinks(w);
              w.app.dialogs.inputs = {".htm"};
          }}},
        {"b_killpop", {on, barsOn + QStringList{"b_killpop"}}},
        {"b_addtohei", {file("BlockList.txt"), {second}}},
        {"b_besilent", {on, barsOn + QStringList{"b_besilent"}}},
        {"b_importfav",
         {favourites,
          {"Fav http://fav.test/", "Get Help https://www.mozilla.org/en-US/firefox/",
           "Hacker News https://news.ycombinator.com/",
           "Bread – Café https://example.org/bread?a=1&b=2", "Debian https://www.debian.org/",
           "Aardvark https://zzz.example/"},
          openFile(QUB_TEST_SUPPORT_DIR "/bookmarks/firefox.html")}},
        {"b_exportfav",
         {[](Window& w) { return addressesIn(file("bookmarks.html")(w).join(' ')); },
          {"http://fav.test/"},
          saveTo("bookmarks.html")}},
        {"b_openaddrbook", {opened, {"address book"}}},
        {"b_orgtrans",
         {shown,
          {"text ./Translist.txt: Google Translate (to English)|"
           "https://translate.google.com/translate?sl=auto&tl=en&u={url}"}}},
        {"b_viewtexts",
         {shown + file("SavedFiles/temp.dat"),
          {"text Second Page: Text of the page"},
          pageAnswers("Text of the page")}},
        {"b_stoppopup", {on, barsOn + QStringList{"b_stoppopup"}}},
        {"sep_sFile2", {told, {"2 ask designMode"}}},
        {"b_imgs", {on + told, barsOn + QStringList{"b_imgs", "2 remove pictures 1 flash 0"}}},
        {"b_swfs", {on + told, barsOn + QStringList{"b_swfs", "2 remove pictures 0 flash 1"}}},
        {"b_aboutme", {asked, {aboutText()}}},
        {"b_history",
         {window + checks,
          barChecks + QStringList{"side cbnd_History", "sub_View/b_history", "tb_Main/b_history"}}},
        {"b_showfav",
         {window + checks,
          barChecks + QStringList{"side cbnd_Fav", "sub_View/b_showfav", "tb_Main/b_showfav"}}},
        {"b_allowsite",
         {told + on + file("AllowedSites.txt"),
          barsOn + QStringList{"b_allowsite", "2 refresh", "http://second.test"}}},
        {"b_filterlists",
         {[](Window& w) {
              QStringList lines;
              for (const QString& line : asked(w) + file("FilterListsOff.txt")(w))
                  lines << w.local(line);
              return lines;
          },
          {"Filter Lists",
           "Filter lists keep ads and trackers out of pages. Lists of your own are read from "
           "./Filters.",
           "./Filters/mine.txt"},
          [](Window& w) {
              QDir().mkpath(w.app.appDir + "Filters");
              writeFile(w.app.appDir + "Filters/mine.txt", "||ads.test^\n");
              w.app.dialogs.flips = {{0}};
          }}},
        {"b_addtononproxy", {[](Window& w) { return w.p->connection.bypass(); }, {"second.test"}}},

        // The generated entries, one of each kind.
        {"fav",
         {tabs, newTabAt("http://fav.test/"),
          [](Window& w) {
              // The favourites come once the window has drawn itself.
              QTRY_VERIFY(w.firstTool([](const Tool& tool) {
                  return cmd::onRoute(tool.key(), cmd::Route::Favourite);
              }));
          }}},
        {"tra",
         {tabs, newTabAt("https://translate.google.com/translate?sl=auto&tl=en&u=" +
                         QString::fromLatin1(QUrl::toPercentEncoding(second)))}},
        {"tab", {tabs, {"*1 " + start, "2 " + second}}},
        {"block", {tabs, {"2 " + second, "*3 " + start}, [](Window& w) { w.p->tabs.closeTab(1); }}},
        {"lang",
         {[](Window& w) {
              return QStringList{w.p->bar.tool(key::mainBar, key::back)->caption(),
                                 ProfileFile(w.app.appDir + "lng.ini")
                                     .readString("QUB_Main", LanguageMenu::nameKey)};
          },
          {QString::fromUtf8("Zurück"), "Deutsch"}}},
        {"Proxy",
         {[](Window& w) {
              QStringList lines{"proxy " + w.p->connection.proxy()};
              const Band* menu = w.p->bar.band(key::proxyMenu);
              for (int i = 0; i < menu->count(); ++i)
                  if (menu->at(i)->checked())
                      lines << "checked " + menu->at(i)->key();
              return lines;
          },
          {"proxy proxy.test:8080", "checked Proxy2"},
          {},
          "Proxy2"}},
    };
    return table;
}

} // namespace

class EveryToolTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    // A row for every place of every fixed key in the bands of the composed
    // window (one with no band for a key that stands nowhere), and one for
    // every route.
    void everyCommandHasItsEffect_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("band");
        QTest::addColumn<int>("route");
        const Window w;
        QVERIFY(w.started);
        for (const cmd::CommandInfo& command : cmd::commandTable) {
            QStringList bands;
            for (const auto& band : w.p->bar.bands())
                if (band->tool(command.key))
                    bands << band->key();
            for (const QString& band : bands.isEmpty() ? QStringList{QString()} : bands)
                QTest::addRow("%s/%s", qPrintable(band), command.key)
                    << QString::fromLatin1(command.key) << band << -1;
        }
        for (const cmd::RouteInfo& route : cmd::routeTable)
            QTest::newRow(route.prefix)
                << QString::fromLatin1(route.prefix) << QString() << int(route.id);
    }

    // Clicked on the rendered menu's own action where the user could, so the
    // path from the menu to the handler is what runs; a disabled tool (Back
    // on a new window) is reported as clicked by the bar.
    void everyCommandHasItsEffect()
    {
        QFETCH(QString, key);
        QFETCH(QString, band);
        QFETCH(int, route);
        const auto found = effects().find(key);
        if (found == effects().end())
            QFAIL(qPrintable("no effect known for " + key));
        const Effect& effect = found->second;
        Window w;
        QVERIFY(w.started);
        if (effect.before)
            effect.before(w);
        if (QTest::currentTestFailed())
            return;
        if (route >= 0 && !effect.tool.isEmpty())
            QVERIFY(cmd::onRoute(effect.tool, cmd::Route(route)));
        Tool* tool = route < 0 ? w.p->bar.tool(band, key) : w.firstTool([&](const Tool& candidate) {
            if (!effect.tool.isEmpty())
                return candidate.key() == effect.tool;
            return !cmd::find(candidate.key()) && cmd::onRoute(candidate.key(), cmd::Route(route));
        });
        QVERIFY2(tool, qPrintable(key + " stands in no band"));
        if (QAction* action = w.p->barWidgets->action(tool); action && action->isEnabled())
            action->trigger();
        else
            w.p->bar.reportClick(tool);
        QStringList seen = effect.probe(w);
        QStringList expected = effect.expected;
        seen.sort();
        expected.sort();
        QCOMPARE(seen, expected);
    }

    // Every menu drops down and every tool's secondary action runs without a
    // warning: the tabs' close them, the security indicator's opens the
    // options at Security.
    void everyMenuDropsDownAndEverySecondaryActionRuns()
    {
        Window w;
        QVERIFY(w.started);
        // Snapshots: secondary actions take tools away as they go.
        std::vector<std::pair<QString, QString>> tools;
        for (const auto& band : w.p->bar.bands()) {
            w.p->bar.reportDropDown(band.get());
            for (int i = 0; i < band->count(); ++i)
                tools.emplace_back(band->key(), band->at(i)->key());
        }
        for (const auto& [band, key] : tools)
            if (Tool* tool = w.p->bar.tool(band, key))
                w.p->bar.reportSecondary(tool);
        QCOMPARE(tabs(w), QStringList{"*3 (blank)"});
        QCOMPARE(shown(w), QStringList{"options 1"});
    }
};

QUB_TEST_MAIN(EveryToolTest)
#include "tst_everytool.moc"
