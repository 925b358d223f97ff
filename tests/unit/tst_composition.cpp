// The real main window composed on fake views: every command and signal
// wired, and the parts that several subsystems share (switches, the blocked
// list, languages, redraws, options) working together. What each command
// does is tst_everytool's.
#include "app/MainWindow.h"
#include "app/OptionsDialog.h"
#include "commandbar/widgets/CommandBarWidgets.h"
#include "core/Keys.h"
#include "favorites/FavouritesFolder.h"
#include "platform/ini/ProfileFile.h"
#include "support/FakeApp.h"
#include "support/Files.h"
#include "support/ObjectCensus.h"
#include "support/TestMain.h"
#include "tabs/Ellipsis.h"
#include "tabs/LoadingPictures.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

using namespace platform;
using namespace commandbar;

class CompositionTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    // After the real composition every command and route has its handler and
    // every signal of the program's classes has a listener: a wire that ends
    // in the wall shows here, not in a user's hands.
    void everyCommandRouteAndSignalIsWired()
    {
        ObjectCensus census;
        FakeApp app({"default.tb2", "lng.ini"});
        QVERIFY(app.window->start(QStringLiteral("http://start.test/")));
        MainWindow::Parts parts = app.window->parts();
        QTRY_VERIFY(parts.bar.tool(key::favouritesPage, key::favouritesTree)->control());
        parts.tabs.newTab(QStringLiteral("http://second.test/"), true);

        QStringList unhandled;
        for (const cmd::CommandInfo& command : cmd::commandTable)
            if (!parts.commands.handles(command.id))
                unhandled << QLatin1String(command.key);
        for (const cmd::RouteInfo& route : cmd::routeTable)
            if (!parts.commands.handles(route.id))
                unhandled << QLatin1String(route.prefix);
        QVERIFY2(unhandled.isEmpty(), qPrintable(unhandled.join(' ')));
        const QStringList unheard = census.unheardSignals();
        QVERIFY2(unheard.isEmpty(), qPrintable(unheard.join(' ')));
    }

    // A switch is one value wherever it shows: a menu's check, the options
    // dialog's box, what the blocker and new tabs act on, the settings file.
    void switchesAreOneValueInMenusOptionsAndSettings()
    {
        FakeApp app({"default.tb2", "lng.ini"});
        QVERIFY(app.window->start(QStringLiteral("http://start.test/")));
        MainWindow::Parts parts = app.window->parts();
        auto menuCheck = [&](const QString& band, const QString& key) {
            return parts.bar.tool(band, key)->checked();
        };
        auto boxes = [&] {
            parts.bar.reportClick(parts.bar.tool(key::toolsMenu, "b_opInternet"));
            QMap<QString, QCheckBox*> byCaption;
            for (QCheckBox* box :
                 app.window->findChild<OptionsDialog*>()->findChildren<QCheckBox*>())
                byCaption.insert(box->text(), box);
            return byCaption;
        };
        parts.bar.reportClick(parts.bar.tool(key::toolsMenu, "b_stoppopup"));
        parts.bar.reportClick(parts.bar.tool("sub_ContentBlock", "b_imgs"));
        QMap<QString, QCheckBox*> shown = boxes();
        QVERIFY(shown.value("Block Popup Windows")->isChecked());
        QVERIFY(shown.value("Remove Images")->isChecked());
        QVERIFY(!shown.value("Silent Pages (no script dialogs)")->isChecked());

        shown.value("Block Popup Windows")->setChecked(false);
        shown.value("Kill Popups by Address")->setChecked(true);
        shown.value("Silent Pages (no script dialogs)")->setChecked(true);
        app.window->findChild<OptionsDialog*>()->accept();
        QVERIFY(!menuCheck(key::toolsMenu, "b_stoppopup"));
        QVERIFY(menuCheck(key::toolsMenu, "b_killpop"));
        QVERIFY(menuCheck(key::toolsMenu, "b_besilent"));
        QVERIFY(menuCheck("sub_ContentBlock", "b_imgs"));
        parts.tabs.newTab({}, true);
        QVERIFY(parts.tabs.currentView()->silent());
        QVERIFY(boxes().value("Kill Popups by Address")->isChecked());
        app.window->findChild<OptionsDialog*>()->reject();

        // The side bar's switches follow it however it goes: here the bar's
        // own right-click menu hides it.
        parts.bar.reportClick(parts.bar.tool(key::mainBar, key::favouritesSwitch));
        QVERIFY(menuCheck(key::viewMenu, key::favouritesSwitch));
        parts.bar.band(key::leftBar)->setVisible(false);
        QVERIFY(!menuCheck(key::viewMenu, key::favouritesSwitch));
        QVERIFY(!menuCheck(key::mainBar, key::favouritesSwitch));

        // "Add Page to Block List" lists the tab's site; with Kill Popups on,
        // its pages go.
        parts.tabs.currentView()->navigate(QStringLiteral("http://ads.test/page.html"));
        parts.bar.reportClick(parts.bar.tool(key::toolsMenu, "b_addtohei"));
        QCOMPARE(readFile(app.appDir + "BlockList.txt"), QByteArray("http://ads.test/page.html\n"));
        platform::NavigationRequest next{QUrl("http://www.ads.test/next"),
                                         platform::NavigationRequest::Kind::Typed, true};
        QVERIFY(!app.factory.allows(*parts.tabs.view(1), next));

        app.dialogs.answers = {Dialogs::Answer::Yes};
        app.window->quit();
        const ProfileFile settings(app.appDir + "Browser.ini");
        QCOMPARE(settings.readString("QUB-BROWSER", "STOPPOPUP"), "0");
        QCOMPARE(settings.readString("QUB-BROWSER", "KILLPOP"), "1");
        QCOMPARE(settings.readString("QUB-BROWSER", "BESILENT"), "1");
    }

    // A closed page joins the Blocked Windows list by its title, without
    // counting as blocked, and opens again from there.
    void closedPagesCanBeOpenedAgain()
    {
        FakeApp app({"default.tb2", "lng.ini"});
        QVERIFY(app.window->start(QStringLiteral("http://start.test/")));
        MainWindow::Parts parts = app.window->parts();
        parts.tabs.newTab(QStringLiteral("http://closed.test/page"), true);
        const QString title = QStringLiteral("A page whose title is longer than the list shows");
        static_cast<FakeBrowserView*>(parts.tabs.currentView())->setTitle(title + title);
        const QString counter = parts.bar.tool(key::statusBar, "b_blocked")->caption();
        parts.bar.reportClick(parts.bar.tool(key::fileMenu, key::closeTab));

        const Band* list = parts.bar.band("sub_Blocked");
        QCOMPARE(list->count(), 1);
        QCOMPARE(list->at(0)->caption(), ellipsis(title + title, 50));
        QCOMPARE(parts.bar.tool(key::statusBar, "b_blocked")->caption(), counter);
        parts.bar.reportClick(list->at(0));
        QCOMPARE(parts.tabs.currentView()->locationUrl(), "http://closed.test/page");
    }

    // What a page, a file or the user named is shown as written: an "&" in it
    // is no access key, in every menu and on the tabs.
    void captionsMadeFromDataShowAsWritten()
    {
        FakeApp app({"default.tb2", "lng.ini"});
        writeFile(app.appDir + "Translist.txt", "Tom & Jerry|http://tr.test/?u={url}\n");
        writeFile(app.appDir + "Proxies.txt", "ann:p&ss@127.0.0.1:3128\n");
        const QString favourites = FavouritesFolder::userRoot();
        QVERIFY(QDir().mkpath(favourites));
        writeFile(favourites + "Rock & Roll.url", "[InternetShortcut]\nURL=http://rock.test/\n");
        QVERIFY(app.window->start(QStringLiteral("http://start.test/")));
        MainWindow::Parts parts = app.window->parts();
        QTRY_VERIFY(parts.bar.tool(key::favouritesPage, key::favouritesTree)->control());
        static_cast<FakeBrowserView*>(parts.tabs.currentView())->setTitle("Salt & Pepper");
        emit parts.tabs.currentView()->titleChanged("Salt & Pepper");
        parts.tabs.newTab(QStringLiteral("http://closed.test/"), true);
        static_cast<FakeBrowserView*>(parts.tabs.currentView())->setTitle("Bread & Butter");
        parts.bar.reportClick(parts.bar.tool(key::fileMenu, key::closeTab));

        auto shownAsWritten = [&](const QString& band, const QString& written) {
            for (int i = 0; i < parts.bar.band(band)->count(); ++i) {
                QAction* action = parts.barWidgets->action(parts.bar.band(band)->at(i));
                const QString text = action->text().section('\t', 0, 0);
                if (QString(text).replace("&&", "&") == written)
                    return QKeySequence::mnemonic(text).isEmpty();
            }
            return false;
        };
        QVERIFY(shownAsWritten(key::favMenu, "Rock & Roll"));
        QVERIFY(shownAsWritten("sub_Trans", "Tom & Jerry"));
        QVERIFY(shownAsWritten(key::proxyMenu, "ann:p&ss@127.0.0.1:3128"));
        QVERIFY(shownAsWritten("sub_Blocked", "Bread & Butter"));
        QVERIFY(shownAsWritten(key::tabsBar, "Salt & Pepper"));
        // The skin's own captions keep their access keys.
        QCOMPARE(QKeySequence::mnemonic(
                     parts.barWidgets->action(parts.bar.tool(key::fileMenu, key::newTab))->text()),
                 QKeySequence(Qt::ALT | Qt::Key_T));
        QVERIFY(QFile::remove(favourites + "Rock & Roll.url"));
    }

    // The Language menu lists the files beside the program; a switch copies
    // the file over lng.ini and captions the window anew, as often as asked.
    void languageSwitchRecaptionsTheWindow()
    {
        FakeApp app({"default.tb2", "English.lng", "Deutsch.lng", "lng.ini"});
        QVERIFY(app.window->start(QStringLiteral("http://start.test/")));
        MainWindow::Parts parts = app.window->parts();
        Band* menu = parts.bar.band("sub_Language");
        QCOMPARE(menu->count(), 2);
        QCOMPARE(menu->at(0)->caption(), "Deutsch");
        QCOMPARE(menu->at(1)->caption(), "English");
        QVERIFY(!menu->at(0)->checked() && menu->at(1)->checked());
        Tool* security = parts.bar.tool(key::statusBar, key::securityTool);
        Tool* back = parts.bar.tool(key::mainBar, "b_back");
        const QString englishLabels = security->tag();

        parts.bar.reportClick(parts.bar.tool(key::toolsMenu, key::companionBar));
        for (int round = 0; round < 2; ++round) {
            parts.bar.reportClick(menu->at(0));
            QCOMPARE(parts.net.companion()->windowTitle(), "Begleiter");
            QCOMPARE(readFile(app.appDir + "lng.ini"), readFile(app.appDir + "Deutsch.lng"));
            QVERIFY(menu->at(0)->checked() && !menu->at(1)->checked());
            QCOMPARE(parts.barWidgets->action(back)->text(), QString::fromUtf8("Zurück"));
            QCOMPARE(security->caption(), QString::fromUtf8("Unverschlüsselt"));
            parts.bar.reportClick(menu->at(1));
            QCOMPARE(back->caption(), "Back");
            QCOMPARE(security->tag(), englishLabels);
            QCOMPARE(parts.net.companion()->windowTitle(), "Companion");
            QVERIFY(parts.bar.tool(key::toolsMenu, key::companionBar)->checked());
        }

        // A language file gone since the menu was built: lng.ini stays.
        QFile::remove(app.appDir + "Deutsch.lng");
        parts.bar.reportClick(menu->at(0));
        QCOMPARE(app.dialogs.asked.last(), "Cannot find source file");
        QCOMPARE(readFile(app.appDir + "lng.ini"), readFile(app.appDir + "English.lng"));
        QCOMPARE(back->caption(), "Back");
    }

    void barRedrawsArePacedButNotTheirState()
    {
        FakeApp app({"default.tb2", "lng.ini"});
        QVERIFY(app.window->start(QStringLiteral("http://start.test/")));
        MainWindow::Parts parts = app.window->parts();
        QWidget* strip = parts.barWidgets->container(parts.bar.band(key::tabsBar));
        Tool* tab = parts.bar.band(key::tabsBar)->at(0);
        // What the window set up before it showed is in its first frame.
        for (const auto& band : parts.bar.bands())
            if (QWidget* container = parts.barWidgets->container(band.get()))
                QVERIFY2(container->updatesEnabled(), qPrintable(band->key()));
        // A loading picture does not make the tab band taller, which would
        // resize the page while it loads.
        const int height = strip->sizeHint().height();
        tab->setPicture(loadingPicture(1, parts.bar.pagePicture()));
        QCOMPARE(strip->sizeHint().height(), height);
        QTRY_VERIFY(strip->updatesEnabled());
        for (int i = 1; i <= 20; ++i)
            tab->setCaption(QStringLiteral("Page %1").arg(i));
        QCOMPARE(parts.barWidgets->action(tab)->text(), "Page 20");
        QVERIFY(!strip->updatesEnabled());
        QTRY_VERIFY_WITH_TIMEOUT(strip->updatesEnabled(), 1000);

        // A widget not yet on screen is never held: the window's first frame
        // draws it whole. One that goes while held leaves nothing behind.
        RedrawPacer pacer;
        auto* status = new QLineEdit;
        pacer.changing(*status);
        pacer.changing(*status);
        QVERIFY(status->updatesEnabled());
        status->show();
        pacer.changing(*status);
        pacer.changing(*status);
        QVERIFY(!status->updatesEnabled());
        delete status;
        auto* other = new QLineEdit(parts.statusText);
        pacer.changing(*other);
        QTRY_VERIFY_WITH_TIMEOUT(other->updatesEnabled(), 1000);
    }

    void optionsOpenAtTheirPageOverADisabledWindow()
    {
        FakeApp app({"default.tb2"});
        QVERIFY(app.window->start({}));
        MainWindow::Parts parts = app.window->parts();

        parts.bar.reportSecondary(parts.bar.tool(key::statusBar, "b_security"));
        auto* options = app.window->findChild<OptionsDialog*>();
        QVERIFY(options && options->isEnabled());

        // A second request shows the same dialog at its page.
        parts.bar.reportClick(parts.bar.tool(key::toolsMenu, "b_opInternet"));
        QCOMPARE(app.window->findChildren<OptionsDialog*>().size(), 1);
        QCOMPARE(options->page(), int(OptionsDialog::General));

        for (QPushButton* button : options->findChildren<QPushButton*>())
            if (button->text() == "Delete Cookies")
                button->click();
        QCOMPARE(app.factory.privacy.cleared, QList<int>({PrivateData::Cookies}));
        QList<QCheckBox*> boxes = options->findChildren<QCheckBox*>();
        QVERIFY(!boxes.isEmpty());
        boxes.first()->toggle();
        QCOMPARE(options->changedSwitches().size(), 1);

        options->findChild<QLineEdit*>()->setText(" http://home.test/ ");
        options->accept();
        QVERIFY(app.window->isEnabled());
        QCOMPARE(app.factory.home, "http://home.test/");
        QCOMPARE(ProfileFile(app.appDir + "Browser.ini").readString("QUB-BROWSER", "HOMEPAGE"),
                 "http://home.test/");
    }
};

QUB_TEST_MAIN(CompositionTest)
#include "tst_composition.moc"
