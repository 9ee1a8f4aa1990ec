#include "rawpeer.h"

#include "nats/natshandles.h"
#include "support/waiting.h"

#include <condition_variable>
#include <mutex>

namespace tavro::testsupport {

using runtime::NatsPointer;

class RawPeer::Private {
public:
    static void onMessage(natsConnection *, natsSubscription *, natsMsg *message, void *closure)
    {
        const NatsPointer<natsMsg> owned(message);
        auto &self = *static_cast<Private *>(closure);
        const char *const reply = natsMsg_GetReply(message);
        const std::lock_guard lock(self.mutex);
        self.all.push_back({natsMsg_GetSubject(message), reply ? reply : "",
                            std::string(natsMsg_GetData(message), std::size_t(natsMsg_GetDataLength(message)))});
    }

    static void onEnded(void *closure)
    {
        auto &self = *static_cast<Private *>(closure);
        const std::lock_guard lock(self.mutex);
        self.hasEnded = true;
        self.ended.notify_all();
    }

    NatsPointer<natsConnection> connection;
    NatsPointer<natsSubscription> subscription;
    mutable std::mutex mutex;
    std::condition_variable ended;
    bool hasEnded = false;
    std::vector<Heard> all;
};

RawPeer::RawPeer(const QString &url)
    : d(std::make_unique<Private>())
{
    natsConnection *connection = nullptr;
    natsConnection_ConnectTo(&connection, url.toUtf8().constData());
    d->connection.reset(connection);
    if (!connection)
        return;
    natsSubscription *subscription = nullptr;
    natsConnection_Subscribe(&subscription, connection, ">", &Private::onMessage, d.get());
    d->subscription.reset(subscription);
    natsSubscription_SetOnCompleteCB(subscription, &Private::onEnded, d.get());
    natsConnection_Flush(connection);
}

RawPeer::~RawPeer()
{
    if (!d->subscription)
        return;
    d->subscription.reset();
    std::unique_lock lock(d->mutex);
    d->ended.wait_for(lock, waitLimit, [this] { return d->hasEnded; });
}

bool RawPeer::isConnected() const
{
    return d->subscription != nullptr;
}

bool RawPeer::send(const char *subject, const QByteArray &data, const char *replyTo)
{
    natsConnection *const connection = d->connection.get();
    const natsStatus status = replyTo
        ? natsConnection_PublishRequest(connection, subject, replyTo, data.constData(), data.size())
        : natsConnection_Publish(connection, subject, data.constData(), data.size());
    return status == NATS_OK && natsConnection_Flush(connection) == NATS_OK;
}

std::vector<RawPeer::Heard> RawPeer::heard(const std::string &begin) const
{
    std::vector<Heard> matching;
    const std::lock_guard lock(d->mutex);
    for (const Heard &each : d->all) {
        if (each.subject.compare(0, begin.size(), begin) == 0)
            matching.push_back(each);
    }
    return matching;
}

} // namespace tavro::testsupport
