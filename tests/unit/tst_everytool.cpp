// Every command of the table and every kind of generated entry, clicked
// through its tool in the composed main window on fake views, has the effect
// it is there for. The rows are the command and route tables; a key with no
// entry in effects() fails, so no command comes in without saying what it does.
#include "app/LanguageMenu.h"
#include "app/MainWindow.h"
#include "app/OptionsDialog.h"
#include "app/ProgressDisplay.h"
#include "commandbar/widgets/CommandBarWidgets.h"
#include "commands/FindBar.h"
#include "commands/WindowCommands.h"
#include "core/Keys.h"
#include "core/Switches.h"
#include "history/AddressCompleter.h"
#include "net/CompanionBar.h"
#include "platform/TextWindow.h"
#include "platform/UserRegistry.h"
#include "support/FakeApp.h"
#include "support/Files.h"
#include "support/TestMain.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QDirIterator>
#include <QLabel>
#include <QTimer>
#include <QUrl>
#include <map>
#include <optional>

using namespace platform;
using namespace commandbar;

namespace {

const QString start = QStringLiteral("http://start.test/");
const QString second = QStringLiteral("http://second.test/");

// A window composed afresh with a favourite, two languages, the translation
// services and a proxy to choose from, and two tabs: 1 at start and 2, the
// current one, at second, titled "Second Page".
struct Window
{
    TemporaryFavourites favourites;
    // Before the window, which reads the folder once it has drawn itself.
    bool withFavourite =
        favourites.add(QStringLiteral("Fav.url"), QStringLiteral("http://fav.test/"));
    FakeApp app{
        QStringList{"default.tb2", "lng.ini", "English.lng", "Deutsch.lng", "Translist.txt"}};
    bool started = false;
    std::optional<MainWindow::Parts> p;
    QStringList closedDialogs;

    Window()
    {
        writeFile(app.appDir + "Proxies.txt", "proxy.test:8080\n");
        // The typed addresses live in the user's folder, which every row shares.
        forgetTypedUrls(UserRegistry());
        started = app.window->start(start);
        p.emplace(app.window->parts());
        p->tabs.newTab(second, true);
        current()->setTitle(QStringLiteral("Second Page"));
        emit current()->titleChanged(QStringLiteral("Second Page"));
        for (FakeBrowserView* view : app.factory.created)
            view->calls.clear();
    }

    FakeBrowserView* current() const
    {
        return static_cast<FakeBrowserView*>(p->tabs.view(p->state.currentTab));
    }
    // The first tool, in the order of the bands, that is wanted.
    Tool* firstTool(const std::function<bool(const Tool&)>& wanted) const
    {
        for (const auto& band : p->bar.bands())
            for (int i = 0; i < band->count(); ++i)
                if (wanted(*band->at(i)))
                    return band->at(i);
        return nullptr;
    }
    // Paths of the program's folder read "./".
    QString local(QString text) const
    {
        return text.replace(QDir::toNativeSeparators(app.appDir), QStringLiteral("./"));
    }
};

using Step = std::function<void(Window&)>;
// What a check reads of the window after the click, as lines of text.
using Probe = std::function<QStringList(Window&)>;

Probe operator+(const Probe& a, const Probe& b)
{
    return [a, b](Window& w) { return a(w) + b(w); };
}

// The tabs: "view index address", the current one marked "*".
const Probe tabs = [](Window& w) {
    QStringList lines;
    for (BrowserView* view : w.p->tabs.tabViews())
        lines << (view->index() == w.p->state.currentTab ? "*" : "") +
                     QString::number(view->index()) + ' ' +
                     (view->locationUrl().isEmpty() ? "(blank)" : view->locationUrl());
    return lines;
};

// What the tabs' pages were told, by view index; a question to a document by
// what it asks about.
const Probe told = [](Window& w) {
    QStringList lines;
    for (BrowserView* tab : w.p->tabs.tabViews()) {
        auto* view = static_cast<FakeBrowserView*>(tab);
        QStringList calls = view->calls + view->printingFacet.calls + view->editingFacet.ran;
        for (QString call : view->documentFacet.calls) {
            if (call.startsWith("ask "))
                for (const char* about :
                     {"innerHTML", "outerText", "contentType", "designMode", "scroll"})
                    if (call.contains(about))
                        call = QStringLiteral("ask ") + about;
            calls << call.section(' ', 0, call.startsWith("write ") ? 0 : -1);
        }
        for (const QString& call : calls)
            lines << QString::number(view->index()) + ' ' + call;
    }
    return lines;
};

const Probe asked = [](Window& w) { return w.app.dialogs.asked + w.closedDialogs; };
const Probe opened = [](Window& w) {
    QStringList lines;
    for (const QString& text : w.app.shell.opened)
        lines << w.local(text);
    return lines;
};
const Probe cleared = [](Window& w) {
    QStringList lines;
    for (int kinds : w.app.factory.privacy.cleared)
        lines << QString::number(kinds);
    return lines;
};

// The newest address kept as typed.
const Probe keptTyped = [](Window&) {
    return QStringList{"typed " + UserRegistry().readValue(typedUrlsKey, "url1")};
};
// What the address box could still tell of pages visited: its list, the
// typed addresses kept, the suggestions it knows; and what it shows.
const Probe typed = keptTyped + [](Window& w) {
    QStringList list;
    for (int i = 0; i < w.p->addressBox->count(); ++i)
        list << w.p->addressBox->itemText(i);
    return QStringList{"list " + list.join(' '),
                       "known " + w.p->addressCompleter.addresses().join(' '),
                       "shown " + w.p->addressBox->currentText()};
};

// The switches that are on, as every part reads them.
const Probe on = [](Window& w) {
    QStringList lines;
    for (const cmd::CommandInfo& command : cmd::commandTable)
        if (switches::isOn(w.p->bar, command.id))
            lines << command.key;
    return lines;
};
const QStringList barsOn = {"b_toolsbarok", "b_addrok", "b_statusok"};

// The command tools checked in the bands, as "band/key".
const Probe checks = [](Window& w) {
    QStringList lines;
    for (const auto& band : w.p->bar.bands())
        for (int i = 0; i < band->count(); ++i)
            if (band->at(i)->checked() && cmd::find(band->at(i)->key()))
                lines << band->key() + '/' + band->at(i)->key();
    return lines;
};
const QStringList barChecks = {"sub_View/b_toolsbarok", "sub_View/b_addrok", "sub_View/b_statusok"};

// The window's own state: full screen, disabled, offline, the main bands
// hidden or floating, the side panel shown.
const Probe window = [](Window& w) {
    QStringList lines;
    if (w.app.window->isFullScreen())
        lines << "full screen";
    if (!w.app.window->isEnabled())
        lines << "disabled";
    if (w.app.factory.connectionState.offline())
        lines << "offline";
    for (const QLatin1String key : {key::menuBar, key::mainBar, key::addressBar, key::statusBar}) {
        const Band* band = w.p->bar.band(key);
        if (!band->visible())
            lines << QStringLiteral("hidden ") + key;
        if (band->floating())
            lines << QStringLiteral("floating ") + key;
    }
    if (const Band* side = w.p->bar.band(key::leftBar); side->visible())
        lines << "side " + side->currentChild();
    if (!w.p->progressDisplay->info()->text().isEmpty())
        lines << "info " + w.p->progressDisplay->info()->text();
    return lines;
};

// The program's own windows on screen.
const Probe shown = [](Window& w) {
    QStringList lines;
    for (const QWidget* widget : w.app.window->findChildren<QWidget*>()) {
        if (!widget->isVisible())
            continue;
        if (qobject_cast<const FindBar*>(widget))
            lines << "find bar";
        if (auto* options = qobject_cast<const OptionsDialog*>(widget))
            lines << "options " + QString::number(options->page());
        if (qobject_cast<const CompanionBar*>(widget))
            lines << "companion";
        if (auto* text = qobject_cast<const platform::TextWindow*>(widget))
            lines << "text " + w.local(text->windowTitle()) + ": " +
                         text->text().section('\n', 0, 0);
    }
    return lines;
};

// The files whose icons the menus asked for.
const Probe icons = [](Window& w) {
    QStringList names;
    for (const QString& path : w.app.shell.iconsAsked)
        names << QFileInfo(path).fileName();
    names.removeDuplicates();
    return names;
};

const Probe zoom = [](Window& w) {
    return QStringList{QString::number(w.current()->zoomFacet.level())};
};

// The lines of a file in the program's folder; none when it is not there.
Probe file(const QString& name)
{
    return [name](Window& w) {
        const QString path = w.app.appDir + name;
        return QFile::exists(path)
                   ? QString::fromUtf8(readFile(path)).split('\n', Qt::SkipEmptyParts)
                   : QStringList();
    };
}

QStringList addressesIn(const QString& text)
{
    static const QRegularExpression quoted(QStringLiteral("(?:href|src)=['\"]([^'\"]+)"),
                                           QRegularExpression::CaseInsensitiveOption);
    QStringList addresses;
    for (const auto& match : quoted.globalMatch(text))
        addresses << match.captured(1);
    return addresses;
}

// The page the program wrote into a tab: its title and addresses.
const Probe written = [](Window& w) {
    QStringList lines;
    for (BrowserView* view : w.p->tabs.tabViews())
        for (const QString& call : static_cast<FakeBrowserView*>(view)->documentFacet.calls)
            if (call.startsWith("write "))
                lines << "title " + call.section("<title>", 1).section('<', 0, 0)
                      << addressesIn(call);
    return lines;
};

// Every favourite as "name address".
const Probe favourites = [](Window& w) {
    QStringList lines;
    for (QDirIterator it(w.favourites.root, {"*.url"}, QDir::Files, QDirIterator::Subdirectories);
         it.hasNext();) {
        const QString path = it.next();
        lines << QFileInfo(path).completeBaseName() + ' ' +
                     ProfileFile(path).readString("InternetShortcut", "URL");
    }
    return lines;
};

QStringList newTabAt(const QString& address)
{
    return {"1 " + start, "2 " + second, "*3 " + (address.isEmpty() ? "(blank)" : address)};
}

// What a step before the click sets up.
Step pageAnswers(const QString& answer)
{
    return [answer](Window& w) { w.current()->documentFacet.answers = {answer}; };
}
const Step pageLinks = [](Window& w) {
    w.current()->documentFacet.links = {
        {{"A", "http://a.test/page.htm"}, {"IMG", "http://b.test/picture.png"}}};
};
Step saveTo(const QString& name)
{
    return [name](Window& w) { w.app.dialogs.savePaths = {w.app.appDir + name}; };
}
Step openFile(const QString& path)
{
    return [path](Window& w) { w.app.dialogs.openPaths = {path}; };
}
// The dialog that the click runs modally is answered as the user would.
Step answerDialog(bool accept)
{
    return [accept](Window& w) {
        QTimer::singleShot(0, w.app.window.get(), [&w, accept] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                w.closedDialogs << dialog->windowTitle();
                accept ? dialog->accept() : dialog->reject();
            }
        });
    };
}
const Step unzoomed = [](Window& w) { w.current()->zoomFacet.setLevel(-1); };

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
        {"b_sendaddr", {opened, {"mailto:?subject=Second Page&body=" + second}}},
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
