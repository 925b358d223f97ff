#include "CompanionBar.h"
#include "CompanionChannel.h"
#include "platform/TextWindow.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>

CompanionBar::CompanionBar(CompanionChannel& channel, QString proxyListPath, QString searchTemplate,
                           Captions captions, platform::Dialogs& dialogs, QWidget* owner)
    : QWidget(owner, Qt::Tool), channel_(channel), proxyListPath_(std::move(proxyListPath)),
      searchTemplate_(std::move(searchTemplate)), captions_(std::move(captions)), dialogs_(dialogs),
      query_(new QLineEdit(this))
{
    setObjectName(QStringLiteral("CompanionBar"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(captions_(QStringLiteral("cmp_Title"), QStringLiteral("Companion")));
    query_->setPlaceholderText(captions_(QStringLiteral("cmp_Search"), QStringLiteral("Search")));
    query_->setToolTip(captions_(QStringLiteral("tip_cmp_Search"), {}));
    query_->setClearButtonEnabled(true);
    query_->setMinimumWidth(220);
    auto* find =
        new QPushButton(QIcon::fromTheme(QStringLiteral("edit-find")),
                        captions_(QStringLiteral("cmp_Search"), QStringLiteral("Search")), this);
    auto* proxies = new QPushButton(
        captions_(QStringLiteral("cmp_Proxies"), QStringLiteral("&Proxies...")), this);
    auto* close =
        new QPushButton(QIcon::fromTheme(QStringLiteral("window-close")),
                        captions_(QStringLiteral("cmp_Close"), QStringLiteral("&Close")), this);
    connect(query_, &QLineEdit::returnPressed, this, &CompanionBar::search);
    connect(find, &QPushButton::clicked, this, &CompanionBar::search);
    connect(proxies, &QPushButton::clicked, this, [this] { editProxies()->show(); });
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 4, 6, 4);
    row->addWidget(query_, 1);
    row->addWidget(find);
    row->addSpacing(12);
    row->addWidget(proxies);
    row->addWidget(close);
}

void CompanionBar::gameover()
{
    quiet_ = true;
    close();
}

void CompanionBar::search()
{
    const QString words = query_->text().trimmed();
    if (words.isEmpty())
        return;
    QString address = searchTemplate_;
    address.replace(QLatin1String("{query}"), QString::fromLatin1(QUrl::toPercentEncoding(words)));
    channel_.setText(QStringLiteral("QUB_open") + address);
}

platform::TextWindow* CompanionBar::editProxies()
{
    return editProxyList(proxyListPath_, dialogs_, channel_, this);
}

platform::TextWindow* CompanionBar::editProxyList(const QString& path, platform::Dialogs& dialogs,
                                                  CompanionChannel& channel, QWidget* parent)
{
    platform::TextWindow* window = platform::TextWindow::editFile(path, dialogs, parent);
    connect(window, &platform::TextWindow::saved, &channel,
            [&channel] { channel.setText(QStringLiteral("QUB_proxychange")); });
    return window;
}

void CompanionBar::closeEvent(QCloseEvent* event)
{
    event->accept();
    if (!quiet_)
        channel_.setText(QStringLiteral("QUB_close"));
}
