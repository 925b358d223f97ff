// Kills the writer (tests/durability/writer.cpp) with SIGKILL at random
// moments, many times, and checks after each kill that every file is whole:
// the settings all old or all new, the typed addresses an unbroken list, the
// last pages whole lines numbered without a gap.
#include "history/HistoryStore.h"
#include "platform/UserRegistry.h"
#include "platform/ini/ProfileFile.h"
#include "session/SessionFiles.h"
#include "support/TestMain.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <deque>

namespace {

const QStringList switchKeys = {"ADDRESSBAR", "STATUSBAR", "TOOLSBAR",  "ICONON",
                                "OPENGETBAR", "BESILENT",  "STOPPOPUP", "KILLPOP"};

int number(const QString& address)
{
    static const QRegularExpression digits(QStringLiteral("-(\\d+)\\."));
    return digits.match(address).captured(1).toInt();
}

// The moments of the kills: new each run, or those of QUB_DURABILITY_SEED to
// run a failure again; the seed is printed either way.
QRandomGenerator killMoments()
{
    bool given = false;
    quint32 seed = qEnvironmentVariable("QUB_DURABILITY_SEED").toUInt(&given);
    if (!given)
        seed = QRandomGenerator::global()->generate();
    qInfo("QUB_DURABILITY_SEED=%u", seed);
    return QRandomGenerator(seed);
}

} // namespace

class DurabilityTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void filesAreWholeAfterEveryKill()
    {
        QTemporaryDir dir;
        const QString appDir = dir.path() + '/';
        const QString registryPath = appDir + "registry.ini";
        QRandomGenerator random = killMoments();
        int killedWhileWriting = 0;
        for (int round = 0; round < 40; ++round) {
            QProcess writer;
            writer.start(QStringLiteral(QUB_DURABILITY_WRITER),
                         {appDir, registryPath, QStringLiteral(QUB_SKIN_FILE)});
            QVERIFY(writer.waitForStarted());
            // The first kill comes once every file has been written once.
            if (round == 0)
                QTRY_VERIFY(QFile::exists(appDir + "LastPages.ini"));
            QTest::qWait(int(random.bounded(30, 250)));
            QCOMPARE(writer.state(), QProcess::Running);
            writer.kill();
            QVERIFY(writer.waitForFinished());

            const platform::ProfileFile settings(appDir + "Browser.ini");
            const QString first = settings.readString("QUB-BROWSER", switchKeys[0]);
            QVERIFY2(first == "0" || first == "1", qPrintable(first));
            for (const QString& key : switchKeys)
                QCOMPARE(settings.readString("QUB-BROWSER", key), first);

            QFile pages(appDir + "LastPages.ini");
            QVERIFY(pages.open(QIODevice::ReadOnly));
            const QByteArray text = pages.readAll();
            QVERIFY(text.endsWith("\r\n"));
            QList<QByteArray> lines = text.split('\n');
            lines.removeLast();
            for (int i = 0; i < lines.size(); ++i)
                QCOMPARE(lines[i], QStringLiteral("http://page-%1.example/\r").arg(i + 1).toUtf8());

            // Newest first, each one before the last, never more than kept.
            const platform::UserRegistry registry(registryPath);
            const int newest = number(registry.readValue(platform::typedUrlsKey, "url1"));
            QVERIFY(newest >= lines.size() && newest <= lines.size() + 1);
            killedWhileWriting += newest != lines.size();
            for (int n = 2; n <= platform::maxTypedUrls; ++n) {
                const QString url =
                    registry.readValue(platform::typedUrlsKey, QString("url%1").arg(n));
                QCOMPARE(url.isEmpty() ? 0 : number(url), std::max(newest - n + 1, 0));
            }
        }
        qInfo("%d of 40 kills fell between a typed address and its page line", killedWhileWriting);
    }

    // The program killed at random moments while its tabs change: after each
    // kill the session file is whole and holds the tabs as they stood at a
    // change no older than the last one a second before the kill, and the
    // next start offers exactly its pages.
    void theSessionSurvivesEveryKill()
    {
        QTemporaryDir dir;
        const QString appDir = dir.path() + '/';
        for (const char* name : {"default.tb2", "English.lng"})
            QVERIFY(QFile::copy(QStringLiteral(QUB_SKIN_DIR "/") + name, appDir + name));
        QVERIFY(QFile::copy(QStringLiteral(QUB_SKIN_DIR "/English.lng"), appDir + "lng.ini"));
        const SessionFiles files(appDir);
        QRandomGenerator random = killMoments();
        QStringList expectedOffer;
        std::optional<SessionState> onDisk;
        int changes = 0;
        for (int round = 0; round < 50; ++round) {
            QProcess writer;
            writer.start(QStringLiteral(QUB_SESSION_WRITER),
                         {appDir, QString::number(random.generate())});
            QVERIFY(writer.waitForReadyRead(20000));
            QVERIFY(writer.canReadLine());
            const QString offered = QString::fromUtf8(writer.readLine()).trimmed();
            QCOMPARE(offered.section(' ', 1), expectedOffer.join(' '));

            // Each change with the moment it was made, as the writer saw it.
            const QDeadlineTimer killAt(int(random.bounded(100, 2000)));
            while (!killAt.hasExpired())
                writer.waitForReadyRead(int(std::max<qint64>(1, killAt.remainingTime())));
            writer.kill();
            QVERIFY(writer.waitForFinished());
            const qint64 killed = QDateTime::currentMSecsSinceEpoch();
            std::deque<std::pair<qint64, SessionState>> states;
            for (const QByteArray& line : writer.readAllStandardOutput().split('\n')) {
                const QList<QByteArray> words = line.split(' ');
                if (words.size() == 3 && words[0] == "state")
                    states.emplace_back(words[1].toLongLong(),
                                        *readSession(QByteArray::fromBase64(words[2])));
            }
            QVERIFY(!states.empty());
            changes += int(states.size());

            // The changes a second old or more must be on disk: all but the
            // last of them may have been overwritten.
            while (states.size() > 1 && states[1].first <= killed - 1000)
                states.pop_front();
            const bool oneIsDue = states.front().first <= killed - 1000;
            // Missing only before the first write, never torn.
            const std::optional<SessionState> read = files.read(0);
            QVERIFY(read || !QFile::exists(files.fileName(0)));
            const bool fromThisRun =
                read && std::any_of(states.begin(), states.end(),
                                    [&](const auto& state) { return state.second == *read; });
            QVERIFY2(fromThisRun || (!oneIsDue && read == onDisk),
                     qPrintable(QStringLiteral("round %1: the file holds no change of the last "
                                               "second or later")
                                    .arg(round)));
            onDisk = read;
            expectedOffer.clear();
            for (const SessionTab& page : read ? read->pages() : QList<SessionTab>())
                expectedOffer << page.address;
        }
        qInfo("%d changes over 50 kills", changes);
    }

    // Killed in the middle of a thousand visits, the store opens with every
    // visit up to the last one it committed, and none after a gap.
    void historyKeepsEveryCommittedVisit()
    {
        QRandomGenerator random = killMoments();
        for (int round = 0; round < 10; ++round) {
            QTemporaryDir dir;
            const QString path = dir.path() + "/History.sqlite";
            QProcess writer;
            writer.start(QStringLiteral(QUB_HISTORY_WRITER), {path});
            QVERIFY(writer.waitForStarted());
            QTRY_VERIFY(QFile::exists(path + "-wal"));
            QTest::qWait(int(random.bounded(20, 1000)));
            QCOMPARE(writer.state(), QProcess::Running);
            writer.kill();
            QVERIFY(writer.waitForFinished());

            const HistoryStore store(path);
            QVERIFY2(store.problem().isEmpty(), qPrintable(store.problem()));
            QList<int> numbers;
            for (const HistoryRecord& record : store.records())
                numbers << number(record.url);
            std::sort(numbers.begin(), numbers.end());
            for (int i = 0; i < numbers.size(); ++i)
                QCOMPARE(numbers[i], i + 1);
        }
    }
};

QUB_TEST_MAIN(DurabilityTest)
#include "tst_durability.moc"
