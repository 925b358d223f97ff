#pragma once
// Where the body of an answer ends, so that its connection can carry the next
// request. The body is passed on framed the one way the proxy read it: a
// length is passed with exactly that length, chunks are passed as chunks
// written anew (trailers dropped), so the engine cannot read an end where the
// proxy read none and take a later answer's bytes for this one's.
#include <QByteArray>

namespace proxy {

class ResponseBody
{
public:
    enum class Kind {
        None,      // HEAD, 1xx, 204, 304: no body whatever the head says
        Length,    // Content-Length
        Chunked,   // Transfer-Encoding ending in chunked
        UntilClose // anything else: the connection's end ends it
    };

    // The body that follows head (a response head without its blank line),
    // the answer to a request of method.
    static ResponseBody of(const QByteArray& method, const QByteArray& head);

    Kind kind() const { return kind_; }
    // The head as it goes on: its framing and connection headers replaced by
    // the one framing read here, and "Connection: close" when closes.
    QByteArray passedHead(const QByteArray& head, bool closes) const;
    // Takes the body's bytes from the front of input (what follows them is
    // left there) and appends what goes on to output. False when the chunks
    // are malformed: the answer cannot be passed on whole.
    bool take(QByteArray& input, QByteArray& output);
    bool done() const { return state_ == State::Done; }

private:
    enum class State { Data, SizeLine, DataEnd, Trailer, Done };

    bool takeLine(QByteArray& input, QByteArray& line);

    Kind kind_ = Kind::UntilClose;
    State state_ = State::Data;
    qint64 length_ = 0;
    qint64 left_ = 0;
    QByteArray line_;
};

} // namespace proxy
