// Bytes from a site, read as the forwarding proxy reads answers: no crash;
// every head passed on has one blank line, at its end, lines ended by CRLF
// only, and says at most once that the connection closes; and the answer
// passed on, read again the same way, ends exactly where it ends, however
// the bytes came in pieces, so the engine cannot find a different end. The
// same head read as a request sends on none of the proxy's own or the
// connection's headers.
#include "proxy/HttpHead.h"
#include "proxy/RequestHead.h"
#include "proxy/ResponseBody.h"

#include <QList>

#include <cstdint>
#include <cstdlib>

using namespace proxy;
using namespace proxy::httphead;

namespace {

void checkHead(const QByteArray& out, bool closes)
{
    if (!out.endsWith("\r\n\r\n") || out.indexOf("\n\r\n") != out.size() - 3 ||
        out.contains("\n\n"))
        abort();
    int connection = 0;
    for (const QByteArray& line : out.left(out.size() - 4).split('\n')) {
        if (line.indexOf('\r') >= 0 && line.indexOf('\r') != line.size() - 1)
            abort();
        connection += headerIs(line, "Connection") ? 1 : 0;
        if (headerIs(line, "Keep-Alive"))
            abort();
    }
    if (connection != (closes ? 1 : 0))
        abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 2)
        return 0;
    const QByteArray method = data[0] % 2 ? "GET" : "HEAD";
    const qsizetype piece = 1 + data[1] % 64;
    QByteArray buffer(reinterpret_cast<const char*>(data + 2), qsizetype(size - 2));
    const std::optional<QByteArray> head = takeHead(buffer);
    if (!head)
        return 0;
    splitAuthority(*head, 80);
    const RequestHead request = RequestHead::parse(*head, "Basic x");
    for (const QByteArray& line : request.headers.split('\n'))
        if (headerIs(line, "Proxy-Authorization") || headerIs(line, "Connection") ||
            headerIs(line, "Proxy-Connection") || headerIs(line, "Keep-Alive"))
            abort();
    // A head without a status is refused, never passed on.
    if (statusOf(*head) == 0)
        return 0;
    ResponseBody body = ResponseBody::of(method, *head);
    const bool closes = data[0] & 2;
    const QByteArray passed = body.passedHead(*head, closes);
    checkHead(passed, closes || body.kind() == ResponseBody::Kind::UntilClose);

    QByteArray out;
    bool whole = true;
    while (whole && !buffer.isEmpty() && !body.done()) {
        QByteArray part = buffer.left(piece);
        buffer.remove(0, part.size());
        whole = body.take(part, out);
        if (!part.isEmpty() && whole && !body.done())
            abort();
    }
    if (!whole)
        return 0;
    QByteArray again = passed;
    ResponseBody reread = ResponseBody::of(method, *takeHead(again));
    if (reread.kind() != body.kind())
        abort();
    QByteArray rewritten;
    if (!reread.take(out, rewritten) || !out.isEmpty() || reread.done() != body.done())
        abort();
    return 0;
}
