// The filter lists' engine: what it decides for requests against small
// lists, how it counts what it skips, and the command-line check around it.
#include "protect/filters/FilterCache.h"
#include "protect/filters/FilterEngine.h"
#include "protect/filters/FilterRequest.h"
#include "support/TestMain.h"

#include <QProcess>
#include <QTemporaryDir>

using namespace filters;
using namespace Qt::Literals::StringLiterals;

namespace {

// "block\tFILTER", "allow\t@@FILTER" or "allow", as the command-line check
// prints it.
QString decide(const QByteArray& list, const QByteArray& url, const QByteArray& source,
               const char* type)
{
    FilterEngine engine;
    engine.addList(std::string_view(list.constData(), size_t(list.size())));
    engine.build();
    const auto request =
        FilterRequest::make(url.toStdString(), source.toStdString(), *requestTypeNamed(type));
    if (!request)
        return QStringLiteral("no request");
    const Decision decision = engine.decide(*request);
    if (!decision.filter)
        return QStringLiteral("allow");
    return QString::fromLatin1(decision.block ? "block\t" : "allow\t") +
           QString::fromStdString(decision.filter->text());
}

} // namespace

class FilterTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void decisions_data()
    {
        QTest::addColumn<QByteArray>("list");
        QTest::addColumn<QByteArray>("url");
        QTest::addColumn<QByteArray>("source");
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QString>("expected");
        const QByteArray host = "||ads.example.com^\n";
        QTest::newRow("host anchor") << host << "https://www.ads.example.com/a.js"_ba
                                     << "https://news.test/"_ba
                                     << "script"_ba
                                     << "block\t||ads.example.com^";
        QTest::newRow("host anchor, end of address") << host << "https://ads.example.com"_ba
                                                     << ""_ba
                                                     << "image"_ba
                                                     << "block\t||ads.example.com^";
        QTest::newRow("host anchor, inside a label") << host << "https://badads.example.com/"_ba
                                                     << ""_ba
                                                     << "image"_ba
                                                     << "allow";
        QTest::newRow("host anchor, longer host") << host << "https://ads.example.com.evil.test/"_ba
                                                  << ""_ba
                                                  << "image"_ba
                                                  << "allow";
        QTest::newRow("a whole host name ends with the host") << "||ads.example.com\n"_ba
                                                              << "https://ads.example.community/"_ba
                                                              << ""_ba
                                                              << "image"_ba
                                                              << "allow";
        QTest::newRow("a host name ending in a dot takes any ending")
            << "||ads.example.\n"_ba
            << "https://ads.example.org/"_ba
            << ""_ba
            << "image"_ba
            << "block\t||ads.example.";
        QTest::newRow("separator is no dot") << "/banner/*/img^\n"_ba
                                             << "https://a.test/banner/x/img.png"_ba
                                             << ""_ba
                                             << "image"_ba
                                             << "allow";
        QTest::newRow("wildcard and separator") << "/banner/*/img^\n"_ba
                                                << "https://a.test/banner/x/y/img?id=1"_ba
                                                << ""_ba
                                                << "image"_ba
                                                << "block\t/banner/*/img^";
        QTest::newRow("right anchor") << "end.js|\n"_ba
                                      << "https://a.test/end.jsx"_ba
                                      << ""_ba
                                      << "script"_ba
                                      << "allow";
        QTest::newRow("left anchor") << "|http://a.test/start\n"_ba
                                     << "https://b.test/http://a.test/start"_ba
                                     << ""_ba
                                     << "image"_ba
                                     << "allow";
        QTest::newRow("case ignored") << "/BigAd.\n"_ba
                                      << "https://a.test/bigad.png"_ba
                                      << ""_ba
                                      << "image"_ba
                                      << "block\t/BigAd.";
        QTest::newRow("match-case") << "/BigAd.$match-case\n"_ba
                                    << "https://a.test/bigad.png"_ba
                                    << ""_ba
                                    << "image"_ba
                                    << "allow";
        QTest::newRow("regular expression with an end anchor") << "/ad[0-9]+\\.js$/\n"_ba
                                                               << "https://a.test/ad12.jsx"_ba
                                                               << ""_ba
                                                               << "script"_ba
                                                               << "allow";
        QTest::newRow("regular expression, found by its plain text")
            << "/\\/ads\\/[a-z]+\\.js/$script\n"_ba
            << "https://a.test/x/ads/Banner.js"_ba
            << ""_ba
            << "script"_ba
            << "block\t/\\/ads\\/[a-z]+\\.js/$script";
        const QByteArray party = "||cdn.example.co.uk^$third-party\n";
        QTest::newRow("first party by registrable domain")
            << party << "https://cdn.example.co.uk/x.js"_ba
            << "https://www.example.co.uk/"_ba
            << "script"_ba
            << "allow";
        QTest::newRow("third party under a shared suffix")
            << party << "https://cdn.example.co.uk/x.js"_ba
            << "https://other.co.uk/"_ba
            << "script"_ba
            << "block\t||cdn.example.co.uk^$third-party";
        QTest::newRow("addresses are compared whole") << "||10.0.1.1^$third-party\n"_ba
                                                      << "http://10.0.1.1/x"_ba
                                                      << "http://192.168.1.1/"_ba
                                                      << "image"_ba
                                                      << "block\t||10.0.1.1^$third-party";
        const QByteArray domains = "/track.$domain=news.test|~sub.news.test\n";
        QTest::newRow("domain, a subdomain of a named one")
            << domains << "https://t.test/track.gif"_ba
            << "https://www.news.test/"_ba
            << "image"_ba
            << "block\t/track.$domain=news.test|~sub.news.test";
        QTest::newRow("domain, the more particular exclusion")
            << domains << "https://t.test/track.gif"_ba
            << "https://a.sub.news.test/"_ba
            << "image"_ba
            << "allow";
        QTest::newRow("domain, no page") << domains << "https://t.test/track.gif"_ba
                                         << ""_ba
                                         << "image"_ba
                                         << "allow";
        QTest::newRow("a site's filter keeps its pages from opening") << "||site.test^\n"_ba
                                                                      << "https://site.test/"_ba
                                                                      << "https://other.test/"_ba
                                                                      << "document"_ba
                                                                      << "block\t||site.test^";
        QTest::newRow("a part of an address does not") << "/ads/*\n||site.test/x^\n"_ba
                                                       << "https://site.test/ads/x"_ba
                                                       << ""_ba
                                                       << "document"_ba
                                                       << "allow";
        QTest::newRow("a page is first-party to itself") << "||site.test^$third-party\n"_ba
                                                         << "https://site.test/"_ba
                                                         << "https://other.test/"_ba
                                                         << "document"_ba
                                                         << "allow";
        QTest::newRow("negated type") << "||site.test^$~image\n"_ba
                                      << "https://site.test/a.png"_ba
                                      << ""_ba
                                      << "image"_ba
                                      << "allow";
        const QByteArray layered = "||ads.test^\n@@||ads.test/ok^\n";
        QTest::newRow("exception") << layered << "https://ads.test/ok/1"_ba
                                   << ""_ba
                                   << "script"_ba
                                   << "allow\t@@||ads.test/ok^";
        QTest::newRow("important over exception") << layered + "||ads.test/ok$important\n"
                                                  << "https://ads.test/ok/1"_ba
                                                  << ""_ba
                                                  << "script"_ba
                                                  << "block\t||ads.test/ok$important";
        QTest::newRow("badfilter") << "||x.test/y\n||x.test/y$badfilter\n"_ba
                                   << "https://x.test/y"_ba
                                   << ""_ba
                                   << "other"_ba
                                   << "allow";
        QTest::newRow("an unknown option drops the filter") << "||q.test^$redirect=noop.js\n"_ba
                                                            << "https://q.test/a.js"_ba
                                                            << ""_ba
                                                            << "script"_ba
                                                            << "allow";
    }

    void decisions()
    {
        QFETCH(QByteArray, list);
        QFETCH(QByteArray, url);
        QFETCH(QByteArray, source);
        QFETCH(QByteArray, type);
        QFETCH(QString, expected);
        QCOMPARE(decide(list, url, source, type.constData()), expected);
    }

    // Which rules reach a site's style sheet, and which never reach any:
    // the sheet is one rule a selector, so a selector that escaped its rule
    // would hide what the list never named. Rules for every site are counted
    // and not applied.
    void elementHiding()
    {
        FilterEngine engine;
        engine.addList("##.banner\na.test##.ad\na.test,B.test##.side\nx.b.test#@#.side\n"
                       "#@#.gone\nb.test##.gone\n~c.test##.promo\n"
                       "##.x{}\n##a[title=\"x]\n##.a/*\n##div:has-text(ad)\n"
                       "example.*##.y\n##+js(x)\n##.z\\\n##a)(\n");
        engine.build();
        QCOMPARE(engine.counts().cosmetic, 7);
        QCOMPARE(engine.counts().skipped, 8);
        const auto selectors = [](const FilterEngine& from, const char* host) {
            QStringList found;
            for (const QString& rule : QString::fromStdString(from.hiding().styleFor(host))
                                           .split(u'\n', Qt::SkipEmptyParts)) {
                // A rule that does not end as written shows whole and fails.
                found << (rule.endsWith(u"{display:none!important}"_s) ? rule.section(u'{', 0, 0)
                                                                       : rule);
            }
            found.sort();
            return found;
        };
        const auto check = [&](const FilterEngine& from) {
            QCOMPARE(selectors(from, "c.test"), QStringList());
            QCOMPARE(selectors(from, "www.a.test"), (QStringList{u".ad"_s, u".side"_s}));
            QCOMPARE(selectors(from, "xa.test"), QStringList());
            QCOMPARE(selectors(from, "b.test"), QStringList{u".side"_s});
            QCOMPARE(selectors(from, "y.x.b.test"), QStringList());
        };
        check(engine);
        const auto again = FilterEngine::fromCompiled(engine.compiled());
        QVERIFY(again);
        check(*again);
    }

    void linesCounted()
    {
        FilterEngine engine;
        engine.addList("[Adblock Plus 2.0]\r\n! Title: test\r\n\r\n||a.test^\r\n"
                       "a.test##.ad\r\n##.banner\r\na.test#@#.ad\r\na.test#?#div:has(.ad)\r\n"
                       "||b.test^$csp=script-src 'none'\r\n/[/\r\n@@||c.test^$domain=d.*");
        QCOMPARE(engine.counts().network, 1);
        QCOMPARE(engine.counts().cosmetic, 3);
        QCOMPARE(engine.counts().skipped, 4);
    }

    void compiledForm()
    {
        FilterEngine engine;
        engine.addList("||ads.test^\n@@||ads.test/ok^\n||ads.test/ok/now$important\n"
                       "/\\/ad[0-9]+\\//$image\n/track.$domain=a.test|~b.a.test,third-party\n"
                       "a.test##.ad\n||x.test^$csp=none\n");
        engine.build();
        const std::string bytes = engine.compiled();
        const auto again = FilterEngine::fromCompiled(bytes);
        QVERIFY(again);
        QCOMPARE(again->compiled(), bytes);
        QCOMPARE(again->counts().network, 5);
        QCOMPARE(again->counts().cosmetic, 1);
        QCOMPARE(again->counts().skipped, 1);
        const auto said = [](const FilterEngine& from, const char* url, const char* source) {
            const Decision decision =
                from.decide(*FilterRequest::make(url, source, RequestType::Image));
            return decision.filter ? QString::fromStdString(decision.filter->text()) : QString();
        };
        for (const auto& [url, source] : {std::pair{"https://ads.test/x", ""},
                                          {"https://ads.test/ok/1", ""},
                                          {"https://ads.test/ok/now", ""},
                                          {"https://c.test/ad12/x.png", ""},
                                          {"https://t.test/track.gif", "https://www.a.test/"},
                                          {"https://t.test/track.gif", "https://b.a.test/"},
                                          {"https://n.test/", ""}})
            QCOMPARE(said(*again, url, source), said(engine, url, source));
        // Cut anywhere, the bytes make no engine.
        for (size_t cut = 0; cut < bytes.size(); cut += 7)
            QVERIFY(!FilterEngine::fromCompiled(std::string_view(bytes).substr(0, cut)));
        QVERIFY(!FilterEngine::fromCompiled(bytes + "x"));
    }

    void cacheFollowsLists()
    {
        QTemporaryDir dir;
        const QString list = dir.filePath("list.txt");
        const auto writeList = [&list](const QByteArray& text) {
            QFile file(list);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(text);
        };
        const auto blocks = [](const FilterEngine& engine, const char* url) {
            return engine.decide(*FilterRequest::make(url, "", RequestType::Script)).block;
        };
        writeList("||ads.test^\n");
        FilterCache cache(dir.filePath("cache/filters.bin"));
        QVERIFY(blocks(cache.engineFor({list, dir.filePath("missing.txt")}), "https://ads.test/"));
        QVERIFY(!cache.lastFromCache());
        QVERIFY(blocks(cache.engineFor({list, dir.filePath("missing.txt")}), "https://ads.test/"));
        QVERIFY(cache.lastFromCache());
        // Another list, a changed one, a damaged cache: each built anew.
        QVERIFY(!blocks(cache.engineFor({list, list}), "https://more.test/"));
        QVERIFY(!cache.lastFromCache());
        writeList("||ads.test^\n||more.test^\n");
        QVERIFY(blocks(cache.engineFor({list, list}), "https://more.test/"));
        QVERIFY(!cache.lastFromCache());
        QFile damaged(dir.filePath("cache/filters.bin"));
        QVERIFY(damaged.open(QIODevice::ReadWrite));
        damaged.resize(damaged.size() / 2);
        damaged.close();
        QVERIFY(blocks(cache.engineFor({list, list}), "https://more.test/"));
        QVERIFY(!cache.lastFromCache());
        QVERIFY(blocks(cache.engineFor({list, list}), "https://more.test/"));
        QVERIFY(cache.lastFromCache());
    }

    void commandLine()
    {
#ifndef QUB_FILTER_CHECK
        QSKIP("this configuration builds no qub-filter-check");
#else
        QTemporaryDir dir;
        const QString list = dir.filePath("list.txt");
        QFile file(list);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("||ads.test^\n@@||ads.test/ok^\n");
        file.close();
        QProcess tool;
        tool.start(QStringLiteral(QUB_FILTER_CHECK), {"--list", list});
        tool.write("https://ads.test/x\thttps://p.test/\tscript\n"
                   "no tabs here\n"
                   "https://ads.test/x\thttps://p.test/\tnosuchtype\n"
                   "https://ads.test/ok/1\t\timage\r\n"
                   "https://p.test/\t\tother");
        tool.closeWriteChannel();
        QVERIFY(tool.waitForFinished());
        QCOMPARE(tool.exitCode(), 0);
        QCOMPARE(tool.readAllStandardOutput(),
                 "block\t||ads.test^\nallow\nallow\nallow\t@@||ads.test/ok^\nallow\n");
        QCOMPARE(tool.readAllStandardError().count("qub-filter-check: line "), 2);

        tool.start(QStringLiteral(QUB_FILTER_CHECK), {"--list", dir.filePath("missing")});
        QVERIFY(tool.waitForFinished());
        QCOMPARE(tool.exitCode(), 2);
        QVERIFY(tool.readAllStandardError().contains("cannot read"));
#endif
    }
};

QUB_TEST_MAIN(FilterTest)
#include "tst_filters.moc"
