#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QPair>
#include <QVector>

#include <optional>

namespace tavro::testsupport {

/// One request exactly as it came over the wire.
struct HttpRequest {
    using Header = QPair<QByteArray, QByteArray>;

    QByteArray method;
    QByteArray target; ///< path and query as sent
    QByteArray version; ///< "HTTP/1.1"
    QVector<Header> headers; ///< in the order sent, names as spelt
    QByteArray head; ///< the raw bytes up to and with the empty line
    QByteArray body;
    int connection = 0; ///< 1 for the first connection that the server accepted

    /// The value of the header @p name (any case); nothing where it was not sent.
    std::optional<QByteArray> header(const QByteArray &name) const;

    /// How often the header @p name (any case) was sent.
    int headerCount(const QByteArray &name) const;

    /// The body as a JSON object; empty where it is none.
    QJsonObject json() const;
};

} // namespace tavro::testsupport
