#include "Socks5Handshake.h"

namespace proxy {

Socks5Handshake::Socks5Handshake(const QString& host, quint16 port, const QString& user,
                                 const QString& password)
    : host_(host.toUtf8().left(255)), port_(port), user_(user.toUtf8().left(255)),
      password_(password.toUtf8().left(255))
{
}

QByteArray Socks5Handshake::greeting() const
{
    return user_.isEmpty() ? QByteArray("\x05\x01\x00", 3) : QByteArray("\x05\x02\x00\x02", 4);
}

Socks5Handshake::Step Socks5Handshake::read(QByteArray& buffer, QByteArray& out)
{
    const auto connectRequest = [this]() -> QByteArray {
        state_ = State::Reply;
        return QByteArray("\x05\x01\x00\x03", 4) + char(host_.size()) + host_ + char(port_ >> 8) +
               char(port_ & 0xff);
    };
    if (state_ == State::Greeting) {
        if (buffer.size() < 2)
            return Step::Waiting;
        const char method = buffer[1];
        buffer.remove(0, 2);
        if (method == 0x02 && !user_.isEmpty()) {
            out += QByteArray(1, '\x01') + char(user_.size()) + user_ + char(password_.size()) +
                   password_;
            state_ = State::SignIn;
            return Step::Waiting;
        }
        if (method != 0x00)
            return Step::SignInRefused;
        out += connectRequest();
        return Step::Waiting;
    }
    if (state_ == State::SignIn) {
        if (buffer.size() < 2)
            return Step::Waiting;
        const bool accepted = buffer[1] == 0x00;
        buffer.remove(0, 2);
        if (!accepted)
            return Step::SignInRefused;
        out += connectRequest();
        return Step::Waiting;
    }
    if (buffer.size() < 5)
        return Step::Waiting;
    const int kind = static_cast<unsigned char>(buffer[3]);
    const qsizetype length = kind == 1   ? 10
                             : kind == 4 ? 22
                             : kind == 3 ? 7 + quint8(buffer[4])
                                         : -1;
    if (buffer[1] != 0 || length < 0)
        return Step::Unreachable;
    if (buffer.size() < length)
        return Step::Waiting;
    buffer.remove(0, length);
    return Step::Reached;
}

} // namespace proxy
