#include "wiretap.h"

#include <nats/nats.h>

#include <condition_variable>
#include <mutex>
#include <vector>

class Wiretap::Private {
public:
    Private(const QString &broker, const QString &group, Hears hears);
    ~Private();

    bool connect(const QString &broker);
    void listen(const QByteArray &subject);
    void send(const QByteArray &subject, const QByteArray &payload);
    static void onMessage(natsConnection *connection, natsSubscription *subscription, natsMsg *message, void *closure);
    static void onEnded(void *closure);

    const QByteArray root;
    natsConnection *connection = nullptr;
    std::vector<natsSubscription *> subscriptions;
    std::mutex mutex;
    std::condition_variable ended;
    std::vector<QString> heard;
    std::size_t endedCount = 0;
};

Wiretap::Private::Private(const QString &broker, const QString &group, Hears hears)
    : root("zvaiassistant." + group.toUtf8())
{
    if (!connect(broker))
        return;
    listen(root + ".clients.>");
    if (hears == Hears::All)
        listen(root + ".server.>");
    natsConnection_Flush(connection);
}

// A subscription's callback may still run when it has been destroyed.
Wiretap::Private::~Private()
{
    for (natsSubscription *subscription : subscriptions)
        natsSubscription_Destroy(subscription);
    std::unique_lock lock(mutex);
    ended.wait(lock, [this] { return endedCount == subscriptions.size(); });
    lock.unlock();
    natsConnection_Destroy(connection);
}

bool Wiretap::Private::connect(const QString &broker)
{
    natsOptions *options = nullptr;
    natsOptions_Create(&options);
    natsOptions_SetURL(options, broker.toUtf8().constData());
    natsOptions_SetNoEcho(options, true);
    natsOptions_SetSendAsap(options, true);
    // One thread for both subscriptions keeps the order in which the broker passes the messages on.
    natsOptions_UseGlobalMessageDelivery(options, true);
    const natsStatus status = natsConnection_Connect(&connection, options);
    natsOptions_Destroy(options);
    return status == NATS_OK;
}

void Wiretap::Private::listen(const QByteArray &subject)
{
    natsSubscription *subscription = nullptr;
    if (natsConnection_Subscribe(&subscription, connection, subject.constData(), onMessage, this) != NATS_OK)
        qFatal("the test cannot listen to %s", subject.constData());
    natsSubscription_SetOnCompleteCB(subscription, onEnded, this);
    subscriptions.push_back(subscription);
}

void Wiretap::Private::send(const QByteArray &subject, const QByteArray &payload)
{
    natsConnection_Publish(connection, subject.constData(), payload.constData(), payload.size());
}

void Wiretap::Private::onMessage(natsConnection * /*connection*/, natsSubscription * /*subscription*/, natsMsg *message,
                                 void *closure)
{
    auto *const d = static_cast<Private *>(closure);
    QByteArray line = natsMsg_GetSubject(message);
    const QByteArray payload(natsMsg_GetData(message), natsMsg_GetDataLength(message));
    if (!payload.isEmpty())
        line += ' ' + payload.toHex();
    natsMsg_Destroy(message);
    const std::lock_guard lock(d->mutex);
    d->heard.push_back(QString::fromUtf8(line));
}

void Wiretap::Private::onEnded(void *closure)
{
    auto *const d = static_cast<Private *>(closure);
    const std::lock_guard lock(d->mutex);
    ++d->endedCount;
    d->ended.notify_all();
}

Wiretap::Wiretap(const QString &broker, const QString &group, Hears hears)
    : d(std::make_unique<Private>(broker, group, hears))
{ }

Wiretap::~Wiretap() = default;

bool Wiretap::isConnected() const
{
    return d->connection != nullptr;
}

QStringList Wiretap::heard() const
{
    const std::lock_guard lock(d->mutex);
    QStringList lines;
    for (const QString &line : d->heard)
        lines.append(line);
    return lines;
}

void Wiretap::call(const QByteArray &name, const QByteArray &payload)
{
    d->send(d->root + ".server." + name, payload);
}

void Wiretap::complete(const QByteArray &name, const QByteArray &payload)
{
    d->send(d->root + ".clients." + name, payload);
}
