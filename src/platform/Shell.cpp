#include "Shell.h"
#include "DesktopEntry.h"

#include "Dialogs.h"

#include <QAudioDevice>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMediaDevices>
#include <QMimeDatabase>
#include <QProcess>
#include <QRegularExpression>
#include <QSoundEffect>
#include <QStandardPaths>
#include <QUrl>

namespace platform {

DesktopShell::DesktopShell() = default;
DesktopShell::~DesktopShell() = default;

bool DesktopShell::open(const QString& address)
{
    // Tolerant: a mailto: text is built unescaped and may hold spaces.
    return QDesktopServices::openUrl(QUrl(address, QUrl::TolerantMode));
}

bool DesktopShell::openAddressBook()
{
    QStringList command = installedApplication(QStringLiteral("ContactManagement")).command;
    if (command.isEmpty())
        return false;
    const QString program = command.takeFirst();
    return start(program, command, {});
}

bool DesktopShell::start(const QString& program, const QStringList& arguments,
                         const QHash<QString, QString>& added)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto it = added.begin(); it != added.end(); ++it)
        environment.insert(it.key(), it.value());
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setProcessEnvironment(environment);
    return process.startDetached();
}

bool DesktopShell::showProperties(const QString& path)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return false;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItemProperties"));
    call << QStringList{QUrl::fromLocalFile(path).toString()} << QString();
    // A file manager started for the call answers within a few seconds.
    return bus.call(call, QDBus::Block, 5000).type() == QDBusMessage::ReplyMessage;
}

QIcon DesktopShell::fileIcon(const QString& path)
{
    if (QFileInfo(path).isDir())
        return QIcon::fromTheme(QStringLiteral("folder"));
    const QMimeType type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension);
    return QIcon::fromTheme(type.iconName(),
                            QIcon::fromTheme(type.genericIconName(),
                                             QIcon::fromTheme(QStringLiteral("text-x-generic"))));
}

QString DesktopShell::handlerName(const QString& scheme)
{
    static const QRegularExpression plainScheme(QStringLiteral("^[a-z][a-z0-9+.-]*$"));
    if (!plainScheme.match(scheme).hasMatch())
        return {};
    QProcess query;
    query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"),
                                             QStringLiteral("x-scheme-handler/") + scheme});
    if (!query.waitForFinished(3000)) {
        query.kill();
        query.waitForFinished();
        return {};
    }
    const QString id = QString::fromUtf8(query.readAllStandardOutput()).trimmed();
    if (id.isEmpty() || query.exitCode() != 0)
        return {};
    const QString name =
        DesktopEntry::load(QStandardPaths::locate(QStandardPaths::ApplicationsLocation, id)).name;
    return name.isEmpty() ? id : name;
}

void DesktopShell::playSound(const QString& path)
{
    if (!QFileInfo(path).isFile() || QMediaDevices::audioOutputs().isEmpty())
        return;
    if (!sound_)
        sound_ = std::make_unique<QSoundEffect>();
    const QUrl source = QUrl::fromLocalFile(path);
    if (sound_->source() != source)
        sound_->setSource(source);
    sound_->play();
}

void showFileProperties(const QString& path, Shell& shell, Dialogs& dialogs)
{
    const QFileInfo file(path);
    if (!file.exists()) {
        dialogs.message(QStringLiteral("cannot open property page"), Dialogs::Buttons::Ok,
                        Dialogs::Icon::None);
        return;
    }
    if (shell.showProperties(file.absoluteFilePath()))
        return;
    const QLocale locale;
    dialogs.showDetails(
        file.fileName() + QStringLiteral(" Properties"),
        {{QStringLiteral("Name"), file.fileName()},
         {QStringLiteral("Type"), QMimeDatabase().mimeTypeForFile(file).comment()},
         {QStringLiteral("Location"), QDir::toNativeSeparators(file.absolutePath())},
         {QStringLiteral("Size"), locale.formattedDataSize(file.size())},
         {QStringLiteral("Modified"), locale.toString(file.lastModified(), QLocale::LongFormat)}});
}

} // namespace platform
