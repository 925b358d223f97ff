#include "AddressUrl.h"

#include <QRegularExpression>
#include <QStringList>

namespace platform {

QUrl urlFromAddress(const QString& address)
{
    QUrl url = QUrl::fromUserInput(address);
    if (url.scheme() == QLatin1String("about"))
        url.setPath(url.path().toLower());
    return url;
}

bool isAddress(const QString& typed)
{
    const QString text = typed.trimmed();
    if (text.isEmpty())
        return false;
    static const QRegularExpression schemePattern(QStringLiteral("^([A-Za-z][A-Za-z0-9+.-]*):"));
    static const QStringList schemes{
        QStringLiteral("http"), QStringLiteral("https"),      QStringLiteral("file"),
        QStringLiteral("ftp"),  QStringLiteral("about"),      QStringLiteral("data"),
        QStringLiteral("blob"), QStringLiteral("javascript"), QStringLiteral("mailto"),
        QStringLiteral("ws"),   QStringLiteral("wss"),        QStringLiteral("view-source")};
    if (const auto match = schemePattern.match(text);
        match.hasMatch() && schemes.contains(match.captured(1).toLower()))
        return true;
    // Paths: absolute, from home, relative, or a drive letter.
    static const QRegularExpression pathPattern(
        QStringLiteral("^(/|~/|\\.{1,2}/|[A-Za-z]:[\\\\/])"));
    if (pathPattern.match(text).hasMatch())
        return true;
    static const QRegularExpression space(QStringLiteral("\\s"));
    if (text.contains(space))
        return false;
    if (text.startsWith(QLatin1Char('[')))
        return true; // an IPv6 host
    static const QRegularExpression pathStart(QStringLiteral("[/?#]"));
    const QString host = text.section(pathStart, 0, 0);
    const qsizetype colon = host.indexOf(QLatin1Char(':'));
    const QString name = colon < 0 ? host : host.left(colon);
    if (colon >= 0) {
        bool numeric = false;
        static_cast<void>(QStringView(host).mid(colon + 1).toUInt(&numeric));
        if (!numeric)
            return false;
    }
    return colon >= 0 || name.contains(QLatin1Char('.')) ||
           name.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0;
}

QUrl searchUrl(const QString& searchTemplate, const QString& words)
{
    QString address = searchTemplate;
    address.replace(QLatin1String("{query}"),
                    QString::fromLatin1(QUrl::toPercentEncoding(words.simplified())),
                    Qt::CaseInsensitive);
    return QUrl(address);
}

QString getDomain(const QString& url)
{
    const qsizetype slashes = url.indexOf(QLatin1String("//"));
    const qsizetype start = slashes < 0 ? 1 : slashes + 2;
    if (start >= url.size())
        return {};
    const qsizetype end = url.indexOf(u'/', start);
    return url.mid(start, end < 0 ? -1 : end - start);
}

} // namespace platform
