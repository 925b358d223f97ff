#pragma once
// A request head from the engine, read as the proxy forwards it: what is
// asked of which host, whether the run's secret came with it, the headers
// that go on, and where its body ends.
#include <QByteArray>
#include <QString>

namespace proxy {

struct RequestHead
{
    // head: without its blank line; credentials: the Proxy-Authorization
    // value of the run's secret.
    static RequestHead parse(const QByteArray& head, const QByteArray& credentials);

    // Not a request line of three words.
    bool malformed = false;
    bool authorised = false;
    // Why the request cannot go on, for the client; empty when it can.
    QByteArray problem;
    QByteArray method;
    QByteArray target;
    QByteArray version;
    // The lines that go on, each ended by CRLF: the proxy's own and the
    // connection's are left out.
    QByteArray headers;
    // Whether the client asked for its connection to close after the answer.
    bool closes = false;
    // The body's length; -1 when its end is the connection's end.
    qint64 bodyLength = 0;
    bool tunnel = false;
    QString host;
    quint16 port = 0;
    // The path and query of a plain request, as the site is asked for it.
    QByteArray originTarget;
};

} // namespace proxy
