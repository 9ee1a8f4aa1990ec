#pragma once

#include <QString>

#include <optional>

namespace tavro::assistantservice {

/// Where the service listens, as the user wrote it: "127.0.0.1:8080", "[::1]:8080", "myhost:0".
struct ListenAddress {
    QString host;
    int port = 0;
};

/// Nothing where the text is not of one of these forms.
std::optional<ListenAddress> parseListenAddress(const QString &text);

/// "http://host:port", with brackets around an IPv6 address.
QString httpUrl(const QString &host, int port);

} // namespace tavro::assistantservice
