#include "aicontroller/boundednetwork.h"

#include <QIODevice>
#include <QUrl>

#include <utility>

namespace tavro::aiassistant {

namespace {

bool isFetched(const QUrl &url)
{
    return url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
}

} // namespace

BoundedNetwork::BoundedNetwork(const TransferLimits &limits, TransferThread::Reader reader)
    : m_limits(limits)
    , m_reader(std::move(reader))
{ }

QNetworkReply *BoundedNetwork::createRequest(Operation operation, const QNetworkRequest &request,
                                             QIODevice *outgoingData)
{
    auto *const reply = new BoundedReply(operation, request, this);
    if (isFetched(request.url()))
        reply->begin(transfers(), outgoingData ? outgoingData->readAll() : QByteArray());
    else
        reply->refuse(QStringLiteral("only http and https addresses are used"));
    return reply;
}

const std::shared_ptr<TransferThread> &BoundedNetwork::transfers()
{
    if (!m_transfers)
        m_transfers = std::make_shared<TransferThread>(m_limits, m_reader);
    return m_transfers;
}

} // namespace tavro::aiassistant
