#include "LastPages.h"
#include "platform/PrivateFiles.h"
#include "tabs/TabStrip.h"

#include <QFile>
#include <QRegularExpression>

bool LastPages::append(const QString& address) const
{
    // Appended one line at a time on purpose: what was written before a
    // shut-down that ran out of time stays.
    QFile file(fileName());
    if (!platform::openPrivate(file, QIODevice::Append))
        return false;
    return file.write(address.toUtf8() + "\r\n") > 0;
}

QStringList LastPages::entries(const QString& text)
{
    QStringList result;
    static const QRegularExpression separators(QStringLiteral("[,\r\n]"));
    for (QString field : text.split(separators)) {
        field = field.trimmed();
        if (field.size() >= 2 && field.startsWith(u'"') && field.endsWith(u'"'))
            field = field.mid(1, field.size() - 2);
        if (!field.isEmpty())
            result << field;
    }
    return result;
}

void LastPages::restore(TabStrip& tabs) const
{
    QFile file(fileName());
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QStringList addresses =
        entries(QString::fromUtf8(file.read(qint64(maxPages) * 4096))).mid(0, maxPages);
    // Gone before the first page opens: a page that brings the program down
    // cannot make every start open it again.
    file.remove();
    // The last page is the one shown, and loads now; the others load when
    // they are first shown.
    for (int n = 0; n < addresses.size(); ++n) {
        const bool shown = n + 1 == addresses.size();
        platform::BrowserView* first = tabs.view(1);
        if (n == 0 && first && first->locationUrl().isEmpty()) {
            if (shown)
                first->navigate(addresses[n]);
            else
                first->navigateWhenShown(addresses[n], {});
        } else if (shown) {
            tabs.newTab(addresses[n], true);
        } else {
            tabs.openWhenShown(addresses[n], {});
        }
    }
}
