#include "openai/upstreamclient.h"

#include "openai/transfer.h"
#include "openai/transferlog.h"

#include <QJsonDocument>

namespace tavro::assistantservice {

struct UpstreamClient::Call {
    const QString &target;
    bool isPost;
    QByteArray body;
    qint64 largestBody;
};

UpstreamClient::UpstreamClient(UpstreamAddress address, QByteArray key)
    : m_address(std::move(address))
    , m_key(std::move(key))
{ }

UpstreamReply UpstreamClient::get(const QString &target, qint64 largestBody, const Patience &patience) const
{
    return exchange({target, false, {}, largestBody}, patience);
}

UpstreamReply UpstreamClient::post(const QString &target, const QJsonObject &body, qint64 largestBody,
                                   const Patience &patience) const
{
    return exchange({target, true, QJsonDocument(body).toJson(QJsonDocument::Compact), largestBody}, patience);
}

bool UpstreamClient::showsKey() const
{
    const QString &host = m_address.host;
    const bool local =
        host == QLatin1String("localhost") || classOf(host.toLatin1().constData()) == AddressClass::Loopback;
    return !m_key.isEmpty() && !m_address.secure && !local;
}

UpstreamReply UpstreamClient::exchange(const Call &call, const Patience &patience) const
{
    TransferRequest request;
    request.url = (m_address.root() + call.target).toLatin1();
    request.headers = {"Accept: application/json"};
    if (!m_key.isEmpty()) {
        request.headers.append("Authorization: Bearer " + m_key);
    }
    if (call.isPost) {
        // Without the second one a large body would wait for a leave that few servers give.
        request.headers += {"Content-Type: application/json", "Expect:"};
        request.isPost = true;
        request.body = call.body;
    }
    request.largestBody = call.largestBody;
    UpstreamReply reply = loggedTransfer(request, call.target, patience);
    m_state.note(reply);
    // What a server says of its failure is shown, and some repeat the key in it.
    if (!m_key.isEmpty() && !reply.isGood()) {
        reply.body.replace(m_key, "***");
    }
    return reply;
}

} // namespace tavro::assistantservice
