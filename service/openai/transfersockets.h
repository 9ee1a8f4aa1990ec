#pragma once

#include <curl/curl.h>

#include <QVector>

namespace tavro::assistantservice {

/// The connections of one transfer, for counting what comes over them.
class TransferSockets {
public:
    curl_socket_t open(const curl_sockaddr &address);
    int close(curl_socket_t socket);

    /// Bytes read of the connection over which most came, whatever they were.
    qint64 bytesRead() const;

private:
    QVector<curl_socket_t> m_open;
};

} // namespace tavro::assistantservice
