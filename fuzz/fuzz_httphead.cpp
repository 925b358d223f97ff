// Bytes from a site, read as the forwarding proxy reads answer heads: no
// crash; every head passed on has one blank line, at its end, lines ended by
// CRLF only, and says exactly once that the connection closes.
#include "proxy/HttpHead.h"

#include <QList>

#include <cstdint>
#include <cstdlib>

using namespace proxy::httphead;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QByteArray buffer(reinterpret_cast<const char*>(data), qsizetype(size));
    while (const std::optional<QByteArray> head = takeHead(buffer)) {
        statusOf(*head);
        splitAuthority(*head, 80);
        const QByteArray out = closingHead(*head);
        if (!out.endsWith("\r\n\r\n") || out.indexOf("\n\r\n") != out.size() - 3 ||
            out.contains("\n\n"))
            abort();
        int connection = 0;
        int proxyConnection = 0;
        for (const QByteArray& line : out.left(out.size() - 4).split('\n')) {
            if (line.indexOf('\r') >= 0 && line.indexOf('\r') != line.size() - 1)
                abort();
            connection += headerIs(line, "Connection") ? 1 : 0;
            proxyConnection += headerIs(line, "Proxy-Connection") ? 1 : 0;
            if (headerIs(line, "Keep-Alive"))
                abort();
        }
        if (connection != 1 || proxyConnection != 1)
            abort();
    }
    return 0;
}
