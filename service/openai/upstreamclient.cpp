#include "openai/upstreamclient.h"

#include "servicelog.h"

#include <QJsonDocument>

#include <algorithm>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace tavro::assistantservice {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds longestConnecting{3000};

// A blocked exchange looks at nothing, so another thread hangs up for it. It does so again and again: before the
// connection stands there is nothing to hang up.
class HangUp {
public:
    HangUp(httplib::ClientImpl &client, const Patience &patience)
        : m_client(client)
        , m_patience(patience)
        , m_thread([this] { watch(); })
    { }

    ~HangUp()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_over = true;
        }
        m_changed.notify_one();
        m_thread.join();
    }

    HangUp(const HangUp &) = delete;
    HangUp &operator=(const HangUp &) = delete;

private:
    void watch()
    {
        constexpr milliseconds step{50};
        std::unique_lock lock(m_mutex);
        while (!m_changed.wait_for(lock, step, [this] { return m_over; })) {
            if (m_patience.isSpent()) {
                m_client.stop();
            }
        }
    }

    httplib::ClientImpl &m_client;
    const Patience &m_patience;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_over = false;
    std::thread m_thread;
};

std::unique_ptr<httplib::ClientImpl> makeClient(const UpstreamAddress &address, const Patience &patience)
{
    const std::string host = address.host.toStdString();
    std::unique_ptr<httplib::ClientImpl> client;
    if (address.secure) {
        client = std::make_unique<httplib::SSLClient>(host, address.port);
    } else {
        client = std::make_unique<httplib::ClientImpl>(host, address.port);
    }
    const milliseconds left = std::max(patience.left(), milliseconds(1));
    client->set_connection_timeout(std::min(left, longestConnecting));
    client->set_read_timeout(left);
    client->set_write_timeout(left);
    client->set_tcp_nodelay(true);
    // The target is encoded already.
    client->set_url_encode(false);
    return client;
}

UpstreamReply::Outcome failure(httplib::Error error, const Patience &patience)
{
    using Outcome = UpstreamReply::Outcome;
    if (patience.isCancelled()) {
        return Outcome::Cancelled;
    }
    switch (error) {
    case httplib::Error::Connection:
    case httplib::Error::ConnectionTimeout:
    case httplib::Error::SSLConnection:
        return Outcome::NotConnected;
    case httplib::Error::SSLLoadingCerts:
    case httplib::Error::SSLServerVerification:
        return Outcome::NotTrusted;
    default:
        return patience.isSpent() ? Outcome::OutOfTime : Outcome::Broken;
    }
}

// The query of a picture's address may let whoever knows it fetch the picture.
std::string pathOf(const QString &target)
{
    return target.section(QLatin1Char('?'), 0, 0).toStdString();
}

const char *outcomeName(UpstreamReply::Outcome outcome)
{
    switch (outcome) {
    case UpstreamReply::Outcome::Answered:
        return "answered";
    case UpstreamReply::Outcome::NotConnected:
        return "not-connected";
    case UpstreamReply::Outcome::NotTrusted:
        return "not-trusted";
    case UpstreamReply::Outcome::TooLarge:
        return "too-large";
    case UpstreamReply::Outcome::OutOfTime:
        return "out-of-time";
    case UpstreamReply::Outcome::Cancelled:
        return "cancelled";
    case UpstreamReply::Outcome::Broken:
        break;
    }
    return "broken";
}

} // namespace

struct UpstreamClient::Call {
    const char *method;
    const QString &target;
    QByteArray body;
    qint64 largestBody;
};

UpstreamClient::UpstreamClient(UpstreamAddress address, QByteArray key)
    : m_address(std::move(address))
    , m_key(std::move(key))
{ }

UpstreamReply UpstreamClient::get(const QString &target, qint64 largestBody, const Patience &patience) const
{
    return exchange({"GET", target, {}, largestBody}, patience);
}

UpstreamReply UpstreamClient::post(const QString &target, const QJsonObject &body, qint64 largestBody,
                                   const Patience &patience) const
{
    return exchange({"POST", target, QJsonDocument(body).toJson(QJsonDocument::Compact), largestBody}, patience);
}

UpstreamReply UpstreamClient::exchange(const Call &call, const Patience &patience) const
{
    const auto begin = std::chrono::steady_clock::now();
    UpstreamReply reply = send(call, patience);
    // What a server says of its failure is shown, and some repeat the key in it.
    if (!m_key.isEmpty() && !reply.isGood()) {
        reply.body.replace(m_key, "***");
    }
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    serviceLog().info("event=upstream endpoint={} outcome={} status={} ms={:.1f} sent={} received={}",
                      pathOf(call.target), outcomeName(reply.outcome), reply.status, took.count(), call.body.size(),
                      reply.body.size());
    return reply;
}

UpstreamReply UpstreamClient::send(const Call &call, const Patience &patience) const
{
    UpstreamReply reply;
    bool tooLarge = false;
    httplib::Request request = makeRequest(call);
    request.content_receiver = [&](const char *data, size_t size, uint64_t, uint64_t) {
        tooLarge = reply.body.size() + static_cast<qint64>(size) > call.largestBody;
        if (!tooLarge) {
            reply.body.append(data, static_cast<int>(size));
        }
        return !tooLarge;
    };
    const std::unique_ptr<httplib::ClientImpl> client = makeClient(m_address, patience);
    const HangUp hangUp(*client, patience);
    const httplib::Result result = client->send(request);
    if (!result) {
        reply.outcome = tooLarge ? UpstreamReply::Outcome::TooLarge : failure(result.error(), patience);
        return reply;
    }
    reply.outcome = UpstreamReply::Outcome::Answered;
    reply.status = result->status;
    reply.retryAfter = QByteArray::fromStdString(result->get_header_value("Retry-After"));
    return reply;
}

httplib::Request UpstreamClient::makeRequest(const Call &call) const
{
    httplib::Request request;
    request.method = call.method;
    request.path = call.target.toStdString();
    request.headers = {{"Host", m_address.authority().toStdString()},
                       {"Accept", "application/json"},
                       {"User-Agent", "assistantservice/" ASSISTANTSERVICE_VERSION}};
    if (!m_key.isEmpty()) {
        request.headers.emplace("Authorization", "Bearer " + m_key.toStdString());
    }
    if (!call.body.isEmpty()) {
        request.headers.emplace("Content-Type", "application/json");
        request.body = call.body.toStdString();
    }
    return request;
}

} // namespace tavro::assistantservice
