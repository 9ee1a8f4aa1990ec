#pragma once

#include <QString>

#include <optional>

namespace tavro::assistantservice {

/// Where an OpenAI-compatible server is.
struct UpstreamAddress {
    bool secure = false;
    QString host;
    int port = 0;
    /// Percent-encoded, without a slash at the end: "/v1".
    QString path;

    /// What a request for an endpoint, such as "/chat/completions", asks the host for.
    QString target(const char *endpoint) const { return path + QLatin1String(endpoint); }
    /// Host and port as the Host header names them.
    QString authority() const;
    /// Scheme, host and port: "http://127.0.0.1:11434".
    QString root() const;
    /// For people: "http://127.0.0.1:11434/v1".
    QString text() const { return root() + path; }

    bool operator==(const UpstreamAddress &other) const;
};

/// Reads the address as people have it at hand: with or without a scheme (then http), with or without "/v1", also with
/// an endpoint behind it. Nothing where it is no address of a web server, or holds a name, password, query or fragment.
std::optional<UpstreamAddress> parseUpstreamAddress(const QString &text);

} // namespace tavro::assistantservice
