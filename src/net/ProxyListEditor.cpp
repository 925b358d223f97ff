#include "ProxyListEditor.h"
#include "platform/Dialogs.h"
#include "platform/NarrowText.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSaveFile>
#include <QVBoxLayout>

ProxyListEditor::ProxyListEditor(QString path, const Captions& captions, platform::Dialogs& dialogs,
                                 QWidget* parent)
    : QDialog(parent), path_(std::move(path)), dialogs_(dialogs), text_(new QPlainTextEdit(this))
{
    setObjectName(QStringLiteral("ProxyListEditor"));
    setWindowTitle(captions(QStringLiteral("cmp_ProxyList"), QStringLiteral("Proxy List")));
    auto* hint = new QLabel(
        captions(QStringLiteral("cmp_ProxyHint"),
                 QStringLiteral("One proxy per line: host:port for an HTTP proxy, or "
                                "socks5://host:port. A name and password may stand before the "
                                "host: user:password@host:port.")),
        this);
    hint->setWordWrap(true);
    QFile file(path_);
    if (file.open(QIODevice::ReadOnly))
        text_->setPlainText(platform::decodeText(file.readAll()));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &ProxyListEditor::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(hint);
    layout->addWidget(text_, 1);
    layout->addWidget(buttons);
    resize(460, 320);
}

void ProxyListEditor::save()
{
    QString content = text_->toPlainText();
    if (!content.isEmpty() && !content.endsWith(QLatin1Char('\n')))
        content += QLatin1Char('\n');
    QSaveFile file(path_);
    if (!file.open(QIODevice::WriteOnly) || file.write(content.toUtf8()) < 0 || !file.commit()) {
        dialogs_.message(QStringLiteral("Cannot write %1").arg(QDir::toNativeSeparators(path_)),
                         platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Critical);
        return;
    }
    emit saved();
    accept();
}
