#include "HttpHead.h"

#include <QList>

namespace proxy::httphead {

bool headerIs(const QByteArray& line, const char* name)
{
    const qsizetype colon = line.indexOf(':');
    return colon > 0 && line.left(colon).trimmed().compare(name, Qt::CaseInsensitive) == 0;
}

QByteArray headerValue(const QByteArray& line)
{
    return line.mid(line.indexOf(':') + 1).trimmed();
}

std::pair<QString, quint16> splitAuthority(const QByteArray& authority, quint16 fallback)
{
    QByteArray text = authority.mid(authority.lastIndexOf('@') + 1);
    QByteArray host = text;
    quint16 port = fallback;
    const qsizetype colon = text.lastIndexOf(':');
    if (colon > 0 && colon > text.lastIndexOf(']')) {
        bool ok = false;
        const uint value = text.mid(colon + 1).toUInt(&ok);
        port = ok && value > 0 && value < 65536 ? quint16(value) : 0;
        host = text.left(colon);
    }
    if (host.startsWith('[') && host.endsWith(']'))
        host = host.mid(1, host.size() - 2);
    return {QString::fromLatin1(host), port};
}

std::optional<QByteArray> takeHead(QByteArray& buffer)
{
    // A blank line ends it, written as "\r\n" or, as receivers also read
    // it, "\n".
    for (qsizetype i = buffer.indexOf('\n'); i >= 0; i = buffer.indexOf('\n', i + 1)) {
        const qsizetype blank = buffer.mid(i + 1, 1) == "\n"     ? 1
                                : buffer.mid(i + 1, 2) == "\r\n" ? 2
                                                                 : 0;
        if (blank == 0)
            continue;
        QByteArray head = buffer.left(i);
        if (head.endsWith('\r'))
            head.chop(1);
        buffer.remove(0, i + 1 + blank);
        return head;
    }
    return std::nullopt;
}

QByteArray basicAuthorization(const QString& user, const QString& password)
{
    return "Basic " + (user + QLatin1Char(':') + password).toUtf8().toBase64();
}

QByteArray firstLine(const QByteArray& head)
{
    const qsizetype end = head.indexOf('\n');
    return end < 0 ? head : head.left(end);
}

int statusOf(const QByteArray& head)
{
    // A lone CR is read as the space it is passed on as.
    const QList<QByteArray> words = firstLine(head).replace('\r', ' ').split(' ');
    const QByteArray code = words.value(1);
    if (!words[0].startsWith("HTTP/") || code.size() != 3)
        return 0;
    const int status = code.toInt();
    return status >= 100 && status <= 599 ? status : 0;
}

} // namespace proxy::httphead
