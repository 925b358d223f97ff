#pragma once
// One line of the proxy list: "host:port" or "http://host:port" for an HTTP
// proxy, "socks5://host:port" for a SOCKS5 one, each with an optional
// "user:password@" before the host.
#include <QString>

#include <optional>

namespace proxy {

struct ProxyEntry
{
    enum class Kind { Http, Socks5 };
    Kind kind = Kind::Http;
    QString host;
    quint16 port = 0;
    QString user;
    QString password;

    // nullopt for a line that names no usable proxy; problem, when given,
    // then says why.
    static std::optional<ProxyEntry> parse(const QString& text, QString* problem = nullptr);
};

} // namespace proxy
