#pragma once

#include <QByteArray>
#include <QVector>

#include <utility>

struct MHD_Connection;

namespace tavro::assistantservice {

/// The head of a request, as it came.
struct HttpHead {
    QByteArray method;
    /// Without the query, and not decoded: no address of the service needs it.
    QByteArray path;
    /// Names and values in the order in which they came.
    QVector<std::pair<QByteArray, QByteArray>> headers;

    /// The value of the first header of that name in any case; empty where there is none.
    QByteArray value(const char *name) const;
    /// The values of all headers of that name, joined by commas.
    QByteArray joined(const char *name) const;
    int count(const char *name) const;
    bool hasBody() const;
};

HttpHead readHead(MHD_Connection *connection, const char *method, const char *path);

} // namespace tavro::assistantservice
