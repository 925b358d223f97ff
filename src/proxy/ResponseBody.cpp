#include "ResponseBody.h"
#include "HttpHead.h"

#include <QList>

#include <algorithm>
#include <cctype>

namespace proxy {

using namespace httphead;

namespace {

// A line of a chunked body may be no longer than this.
constexpr qsizetype maxLine = 4096;

// Every value of the header name, lists split at commas.
QList<QByteArray> valuesOf(const QList<QByteArray>& lines, const char* name)
{
    QList<QByteArray> values;
    for (const QByteArray& line : lines)
        if (headerIs(line, name))
            for (const QByteArray& value : headerValue(line).split(','))
                values.append(value.trimmed().toLower());
    return values;
}

// A length of decimal digits only, all copies the same; -1 otherwise.
qint64 lengthOf(const QList<QByteArray>& values)
{
    qint64 length = -1;
    for (const QByteArray& value : values) {
        if (value.isEmpty() || value.size() > 18)
            return -1;
        for (const char c : value)
            if (c < '0' || c > '9')
                return -1;
        const qint64 n = value.toLongLong();
        if (length >= 0 && n != length)
            return -1;
        length = n;
    }
    return length;
}

} // namespace

ResponseBody ResponseBody::of(const QByteArray& method, const QByteArray& head)
{
    ResponseBody body;
    const int status = statusOf(head);
    if (method == "HEAD" || (status >= 100 && status < 200) || status == 204 || status == 304) {
        body.kind_ = Kind::None;
        body.state_ = State::Done;
        return body;
    }
    const QList<QByteArray> lines = head.split('\n').mid(1);
    const QList<QByteArray> codings = valuesOf(lines, "Transfer-Encoding");
    const QList<QByteArray> lengths = valuesOf(lines, "Content-Length");
    if (!codings.isEmpty()) {
        if (codings.last() == "chunked") {
            body.kind_ = Kind::Chunked;
            body.state_ = State::SizeLine;
        }
        return body;
    }
    if (lengths.isEmpty())
        return body;
    const qint64 length = lengthOf(lengths);
    if (length < 0)
        return body;
    body.kind_ = Kind::Length;
    body.left_ = length;
    body.length_ = length;
    body.state_ = length == 0 ? State::Done : State::Data;
    return body;
}

QByteArray ResponseBody::passedHead(const QByteArray& head, bool closes) const
{
    QByteArray out;
    const QList<QByteArray> lines = head.split('\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QByteArray line = lines[i];
        if (line.endsWith('\r'))
            line.chop(1);
        // A lone CR ends no line here; it must not end one for the engine.
        line.replace('\r', ' ');
        if (line.isEmpty())
            continue;
        if (i > 0 && (headerIs(line, "Connection") || headerIs(line, "Proxy-Connection") ||
                      headerIs(line, "Keep-Alive")))
            continue;
        if (i > 0 && kind_ != Kind::None &&
            (headerIs(line, "Content-Length") || headerIs(line, "Transfer-Encoding")))
            continue;
        out += line + "\r\n";
    }
    if (kind_ == Kind::Length)
        out += "Content-Length: " + QByteArray::number(length_) + "\r\n";
    else if (kind_ == Kind::Chunked)
        out += "Transfer-Encoding: chunked\r\n";
    if (closes || kind_ == Kind::UntilClose)
        out += "Connection: close\r\nProxy-Connection: close\r\n";
    return out + "\r\n";
}

bool ResponseBody::takeLine(QByteArray& input, QByteArray& line)
{
    const qsizetype end = input.indexOf('\n');
    if (end < 0) {
        line_ += input;
        input.clear();
        return false;
    }
    line = line_ + input.left(end);
    input.remove(0, end + 1);
    line_.clear();
    if (line.endsWith('\r'))
        line.chop(1);
    return true;
}

bool ResponseBody::take(QByteArray& input, QByteArray& output)
{
    if (kind_ == Kind::UntilClose) {
        output += input;
        input.clear();
        return true;
    }
    while (state_ != State::Done && !input.isEmpty()) {
        QByteArray line;
        switch (state_) {
        case State::Data: {
            const qsizetype part = qsizetype(std::min<qint64>(left_, input.size()));
            output += input.left(part);
            input.remove(0, part);
            left_ -= part;
            if (left_ == 0)
                state_ = kind_ == Kind::Chunked ? State::DataEnd : State::Done;
            break;
        }
        case State::SizeLine: {
            if (!takeLine(input, line))
                break;
            const QByteArray size = line.split(';').constFirst().trimmed();
            bool ok = !size.isEmpty() && size.size() <= 15;
            for (const char c : size)
                ok = ok && std::isxdigit(static_cast<unsigned char>(c));
            if (!ok)
                return false;
            left_ = size.toLongLong(nullptr, 16);
            if (left_ == 0) {
                state_ = State::Trailer;
            } else {
                output += QByteArray::number(left_, 16) + "\r\n";
                state_ = State::Data;
            }
            break;
        }
        case State::DataEnd:
            if (!takeLine(input, line))
                break;
            if (!line.isEmpty())
                return false;
            output += "\r\n";
            state_ = State::SizeLine;
            break;
        case State::Trailer:
            if (!takeLine(input, line))
                break;
            if (line.isEmpty()) {
                output += "0\r\n\r\n";
                state_ = State::Done;
            }
            break;
        case State::Done:
            break;
        }
        if (line_.size() > maxLine)
            return false;
    }
    return true;
}

} // namespace proxy
