#pragma once

#include "openai/patience.h"
#include "openai/upstreamreply.h"

#include <QByteArrayList>

#include <functional>

namespace tavro::assistantservice {

/// What one exchange asks for.
struct TransferRequest {
    QByteArray url;
    /// "Name: value".
    QByteArrayList headers;
    bool isPost = false;
    QByteArray body;
    /// Bytes of the answer's body that are taken.
    qint64 largestBody = 0;
    /// How often the server may send on to another address.
    int mostRedirects = 0;
    /// Asked of each address before it is connected to; empty: any will do.
    std::function<bool(AddressClass)> mayConnect;
};

/// Makes one exchange over HTTP or HTTPS, on a connection of its own; blocks, notices a cancellation within 50 ms, and
/// may be called from several threads. Proxies, cookies and passwords of the environment do not count.
///
/// libcurl does the work. Measured with 7.88, it ends an endless status line, header line or chunk length by itself,
/// headers at 300 kB. It goes on reading chunk extensions without an end, and keeps trailers without an end: 287 MB
/// after 84 MB of them. So headers, interim answers and trailers count together here (64 kB), and so do the bytes on
/// the wire that make no body.
UpstreamReply transfer(const TransferRequest &request, const Patience &patience);

} // namespace tavro::assistantservice
