#include "RequestHead.h"
#include "HttpHead.h"

#include <QList>

namespace proxy {

using namespace httphead;

RequestHead RequestHead::parse(const QByteArray& head, const QByteArray& credentials)
{
    RequestHead request;
    QList<QByteArray> lines = head.split('\n');
    for (QByteArray& line : lines)
        line = line.trimmed();
    const QList<QByteArray> words = lines.value(0).split(' ');
    if (words.size() != 3) {
        request.malformed = true;
        return request;
    }
    request.method = words[0];
    request.target = words[1];
    request.version = words[2];
    request.closes = request.version != "HTTP/1.1";
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QByteArray& line = lines[i];
        if (headerIs(line, "Proxy-Authorization")) {
            request.authorised = request.authorised || headerValue(line) == credentials;
            continue;
        }
        if (headerIs(line, "Proxy-Connection") || headerIs(line, "Connection")) {
            request.closes = request.closes || headerValue(line).toLower().contains("close");
            continue;
        }
        if (headerIs(line, "Keep-Alive"))
            continue;
        if (headerIs(line, "Content-Length") && request.bodyLength >= 0)
            request.bodyLength = headerValue(line).toLongLong();
        if (headerIs(line, "Transfer-Encoding"))
            request.bodyLength = -1;
        request.headers += line + "\r\n";
    }
    if (request.method == "CONNECT") {
        request.tunnel = true;
        std::tie(request.host, request.port) = splitAuthority(request.target, 0);
    } else {
        if (!request.target.toLower().startsWith("http://")) {
            request.problem = "Only http addresses go through this proxy without CONNECT.";
            return request;
        }
        const QByteArray rest = request.target.mid(7);
        qsizetype slash = rest.indexOf('/');
        const qsizetype query = rest.indexOf('?');
        if (slash < 0 || (query >= 0 && query < slash))
            slash = query;
        const QByteArray authority = slash < 0 ? rest : rest.left(slash);
        request.originTarget = slash < 0 ? QByteArray("/") : rest.mid(slash);
        if (request.originTarget.startsWith('?'))
            request.originTarget.prepend('/');
        std::tie(request.host, request.port) = splitAuthority(authority, 80);
    }
    if (request.host.isEmpty() || request.port == 0)
        request.problem = "The request names no host and port.";
    return request;
}

} // namespace proxy
