#pragma once

#include "aicontroller/boundedreply.h"

#include <QNetworkAccessManager>

#include <memory>

namespace tavro::aiassistant {

/// A network access manager for servers that nobody vouches for: only http and https, no redirects, nothing unpacked,
/// replies of a bounded size (BoundedReply), and the work in a thread of its own.
class BoundedNetwork : public QNetworkAccessManager {
    Q_OBJECT

public:
    BoundedNetwork(const TransferLimits &limits, TransferThread::Reader reader);

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request, QIODevice *outgoingData) override;

private:
    const std::shared_ptr<TransferThread> &transfers();

    const TransferLimits m_limits;
    const TransferThread::Reader m_reader;
    std::shared_ptr<TransferThread> m_transfers; // the replies' too; made for the first of them
};

} // namespace tavro::aiassistant
