#pragma once
// The main window composed on fake views with what every tool acts on, and
// the probes that read back what a click did to it: the vocabulary of the
// table of every command's effect.
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
#include <QAction>
#include <QApplication>
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

inline Probe operator+(const Probe& a, const Probe& b)
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
inline Probe file(const QString& name)
{
    return [name](Window& w) {
        const QString path = w.app.appDir + name;
        return QFile::exists(path)
                   ? QString::fromUtf8(readFile(path)).split('\n', Qt::SkipEmptyParts)
                   : QStringList();
    };
}

inline QStringList addressesIn(const QString& text)
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

inline QStringList newTabAt(const QString& address)
{
    return {"1 " + start, "2 " + second, "*3 " + (address.isEmpty() ? "(blank)" : address)};
}

// What a step before the click sets up.
inline Step pageAnswers(const QString& answer)
{
    return [answer](Window& w) { w.current()->documentFacet.answers = {answer}; };
}
const Step pageLinks = [](Window& w) {
    w.current()->documentFacet.links = {
        {{"A", "http://a.test/page.htm"}, {"IMG", "http://b.test/picture.png"}}};
};
inline Step saveTo(const QString& name)
{
    return [name](Window& w) { w.app.dialogs.savePaths = {w.app.appDir + name}; };
}
inline Step openFile(const QString& path)
{
    return [path](Window& w) { w.app.dialogs.openPaths = {path}; };
}
// The dialog that the click runs modally is answered as the user would.
inline Step answerDialog(bool accept)
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
