#include "TranslationList.h"
#include "platform/NarrowText.h"

#include <QFile>
#include <QUrl>

TranslationList TranslationList::parse(const QString& text)
{
    TranslationList list;
    QStringList lines = text.split(QLatin1Char('\n'));
    // The last line break ends a line; it does not start an empty one.
    if (!lines.isEmpty() && lines.constLast().isEmpty())
        lines.removeLast();
    for (QString line : lines) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        if (line.isEmpty()) {
            list.lines_.push_back({true, {}, {}});
            continue;
        }
        const qsizetype bar = line.indexOf(QLatin1Char('|'));
        if (bar < 0)
            continue;
        list.lines_.push_back({false, line.left(bar), line.mid(bar + 1)});
        list.templates_.append(line.mid(bar + 1));
    }
    return list;
}

TranslationList TranslationList::read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return parse(platform::decodeText(file.readAll()));
}

QString TranslationList::serviceAddress(int n, const QString& pageAddress) const
{
    if (n < 1 || n > templates_.size())
        return {};
    // Encoded whole: the address's own "&", "#" and "?" would otherwise end
    // the service's parameter, or the service's address.
    return QString(templates_[n - 1])
        .replace(QLatin1String("{url}"), QString::fromLatin1(QUrl::toPercentEncoding(pageAddress)),
                 Qt::CaseInsensitive);
}
