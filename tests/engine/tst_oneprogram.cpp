// The program as shipped, started several times over one user's runtime
// folder: a later start hands its address to the running program and ends
// without writing, and a start after a killed program takes its place.
#include "session/SessionFiles.h"
#include "support/Files.h"
#include "support/LocalHttpServer.h"
#include "support/PageProbes.h"
#include "support/TestMain.h"

#include <QDir>
#include <QLockFile>
#include <QProcess>
#include <QTemporaryDir>

namespace {

// Every file under folder but the session's, with its content.
QMap<QString, QByteArray> filesOf(const QString& folder)
{
    QMap<QString, QByteArray> files = filesUnder(folder);
    for (const QString& path : files.keys())
        if (QFileInfo(path).fileName().startsWith("Session"))
            files.remove(path);
    return files;
}

} // namespace

class OneProgramTest : public QObject
{
    Q_OBJECT
    LocalHttpServer server;
    QTemporaryDir home;
    QString appDir = home.path() + "/app/";
    QString runtime = home.path() + "/run";

    QProcess* start(const QString& address)
    {
        auto* program = new QProcess(this);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QUB_APPDIR", appDir);
        env.insert("XDG_RUNTIME_DIR", runtime);
        for (const char* name : {"DATA", "CONFIG", "CACHE"})
            env.insert(QStringLiteral("XDG_%1_HOME").arg(name), home.path() + "/" + name);
        program->setProcessEnvironment(env);
        program->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program->start(QStringLiteral(QUB_PROGRAM),
                       address.isEmpty() ? QStringList() : QStringList{address});
        return program;
    }
    qint64 lockHolder() const
    {
        const QLockFile lock(runtime + "/qub-browser.lock");
        qint64 pid = 0;
        QString host, application;
        return lock.getLockInfo(&pid, &host, &application) ? pid : 0;
    }

private slots:
    void initTestCase()
    {
        for (const char* name : {"one", "two", "three"})
            server.setPage(QStringLiteral("/%1.html").arg(name), titled(name));
        QVERIFY(QDir().mkpath(appDir));
        QVERIFY(QDir().mkpath(runtime));
        QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        for (const char* name : {"default.tb2", "English.lng", "Deutsch.lng"})
            QVERIFY(QFile::copy(QStringLiteral(QUB_SKIN_DIR "/") + name, appDir + name));
        QVERIFY(QFile::copy(QStringLiteral(QUB_SKIN_DIR "/English.lng"), appDir + "lng.ini"));
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void laterStartsOpenTheirAddressInTheFirst()
    {
        const SessionFiles session(appDir);
        QProcess* first = start(server.url("/one.html"));
        QTRY_VERIFY_WITH_TIMEOUT(session.read(0) && session.read(0)->tabs.value(0).title == "one",
                                 30000);
        // The running program's engine keeps writing its profile; the files of
        // the program's own and the runtime folder are what a second could spoil.
        const auto programFiles = [this] {
            QMap<QString, QByteArray> files = filesOf(appDir);
            files.insert(filesOf(runtime));
            return files;
        };
        const QMap<QString, QByteArray> before = programFiles();

        QProcess* second = start(server.url("/two.html"));
        QVERIFY(second->waitForFinished(10000));
        QCOMPARE(second->exitStatus(), QProcess::NormalExit);
        QCOMPARE(second->exitCode(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(
            session.read(0)->tabs.size() == 2 && session.read(0)->tabs[1].title == "two", 30000);
        QCOMPARE(session.read(0)->current, 1);
        QCOMPARE(server.requests("/two.html"), 1);
        QCOMPARE(programFiles(), before);

        // Killed, it leaves its lock and socket; the next start takes over
        // and offers the two pages, and a later start hands over to it.
        first->kill();
        QVERIFY(first->waitForFinished());
        QVERIFY(QFile::exists(runtime + "/qub-browser.socket"));
        QProcess* third = start({});
        // Started together, either could become the running one.
        QTRY_VERIFY_WITH_TIMEOUT(lockHolder() == third->processId(), 10000);
        QProcess* fourth = start(server.url("/three.html"));
        QVERIFY(fourth->waitForFinished(10000));
        QCOMPARE(fourth->exitCode(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(server.requests("/three.html"), 1, 30000);
        QCOMPARE(third->state(), QProcess::Running);
        QCOMPARE(session.read(0)->tabs.size(), 2);
        third->kill();
        QVERIFY(third->waitForFinished());
    }
};

QUB_TEST_MAIN(OneProgramTest)
#include "tst_oneprogram.moc"
