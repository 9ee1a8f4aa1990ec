#pragma once

#include <QByteArray>

#include <optional>

namespace tavro::assistantservice {

/// A name or an IP address with or without a port, as the Host header and the middle of an address write it.
struct Authority {
    /// In lower case, without brackets and without the dot that may end a name.
    QByteArray host;
    /// 0 where there is none.
    int port = 0;
};

/// Nothing where the text is of another form: empty, with a user's name, a path, a blank.
std::optional<Authority> parseAuthority(const QByteArray &text);

/// Whether `host` is an IP address and not a name. A name may be made to lead anywhere, an address cannot.
bool isIpAddress(const QByteArray &host);
/// Whether only programs of this machine get there: 127.0.0.0/8, ::1 or "localhost".
bool isLoopback(const QByteArray &host);
/// Whether it stands for every address of this machine: 0.0.0.0 or ::.
bool isEveryAddress(const QByteArray &host);

} // namespace tavro::assistantservice
