#pragma once
// The client's side of a SOCKS5 handshake with an upstream proxy: the
// greeting, a sign-in with name and password when the proxy asks for one and
// the user gave one, then the request to connect to a host by name.
#include <QByteArray>
#include <QString>

namespace proxy {

class Socks5Handshake
{
public:
    enum class Step {
        Waiting,       // more of the proxy's answer is to come
        Reached,       // the proxy is connected to the host
        SignInRefused, // the proxy wants a sign-in it was not given, or refused it
        Unreachable    // the proxy could not reach the host
    };

    Socks5Handshake(const QString& host, quint16 port, const QString& user,
                    const QString& password);

    // The first bytes to send.
    QByteArray greeting() const;
    // Reads the proxy's answers from the front of buffer; what to send next,
    // if anything, is appended to out.
    Step read(QByteArray& buffer, QByteArray& out);

private:
    enum class State { Greeting, SignIn, Reply };

    QByteArray host_;
    quint16 port_;
    QByteArray user_;
    QByteArray password_;
    State state_ = State::Greeting;
};

} // namespace proxy
