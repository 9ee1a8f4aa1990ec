#pragma once

#include "support/httprequest.h"

#include <QString>

#include <optional>

namespace tavro::testsupport {

/// Takes requests out of a stream of bytes. It understands bodies with a Content-Length, which is all that the module
/// sends.
class HttpRequestReader {
public:
    void feed(const QByteArray &bytes) { m_buffer += bytes; }

    /// The next whole request, once all of its bytes have come.
    std::optional<HttpRequest> next();

    /// Why the stream cannot be understood; empty while it can.
    QString error() const { return m_error; }

private:
    bool readHead();
    bool parseStartLine(const QByteArray &line);
    bool parseHeader(const QByteArray &line);
    bool parseLength();
    bool fail(const QString &why);

    QByteArray m_buffer;
    std::optional<HttpRequest> m_current;
    int m_bodySize = 0;
    QString m_error;
};

} // namespace tavro::testsupport
