#include "http/requesthandler.h"

#include "http/httpresponse.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace tavro::assistantservice {

namespace {

using Phase = ConnectionWatch::Phase;

// A larger request takes milliseconds to read.
constexpr int largeBody = 256 * 1024;
// Bodies on their way in may hold so many times the largest one together.
constexpr qint64 bodiesTogether = 2;
constexpr std::chrono::milliseconds lastReplies{1500};

struct ConnectionState {
    ConnectionWatch::Id id = 0;
    bool lingers = false;
};

ConnectionState &stateOf(MHD_Connection *connection)
{
    return *static_cast<ConnectionState *>(
        MHD_get_connection_info(connection, MHD_CONNECTION_INFO_SOCKET_CONTEXT)->socket_context);
}

int descriptorOf(MHD_Connection *connection)
{
    return MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd;
}

// Many clients write head and body apart, and hold the body back until the head is acknowledged. The kernel would wait
// some 40 ms for an answer to send the acknowledgement with. It forgets the wish now and then, so it is told each time.
void acknowledgeAtOnce(MHD_Connection *connection)
{
    const int yes = 1;
    ::setsockopt(descriptorOf(connection), IPPROTO_TCP, TCP_QUICKACK, &yes, sizeof yes);
}

Reply failure()
{
    return httpErrorReply({ErrorCode::EngineFailed, QStringLiteral("The assistant service failed at this request.")});
}

} // namespace

RequestHandler::RequestHandler(Endpoints endpoints, qint64 largestBody, const ConnectionWatch::Limits &limits)
    : m_endpoints(std::move(endpoints))
    , m_budget(largestBody, bodiesTogether * largestBody)
    , m_watch(limits)
{ }

void RequestHandler::connectionOpened(MHD_Connection *connection, void **state)
{
    *state = new ConnectionState{m_watch.add(descriptorOf(connection))};
}

void RequestHandler::connectionClosed(MHD_Connection *connection, void **state)
{
    const std::unique_ptr<ConnectionState> own(static_cast<ConnectionState *>(*state));
    m_watch.remove(own->id);
    if (own->lingers) {
        m_lingering.add(descriptorOf(connection));
    }
    *state = nullptr;
}

MHD_Result RequestHandler::takeHead(MHD_Connection *connection, const char *method, const char *path, void **exchange)
{
    auto own = std::make_unique<Exchange>();
    Exchange &request = *own;
    *exchange = own.release();
    request.head = readHead(connection, method, path);
    enter(connection, Phase::Receiving);
    acknowledgeAtOnce(connection);
    request.reply = m_endpoints.answerHead(request.head);
    if (!request.reply) {
        request.body.emplace(m_budget);
        return MHD_YES;
    }
    // What comes after the head of a refused request may be a body, whatever the head says.
    request.closeAfterwards = request.head.hasBody() || request.head.method == "POST";
    stateOf(connection).lingers = request.closeAfterwards;
    return request.head.hasBody() ? send(connection, request) : MHD_YES;
}

MHD_Result RequestHandler::takeBody(MHD_Connection *connection, Exchange &exchange, const char *data, size_t size)
{
    m_watch.countBytes(stateOf(connection).id, size);
    return !exchange.body || exchange.body->take(data, size) ? MHD_YES : MHD_NO;
}

MHD_Result RequestHandler::takeEnd(MHD_Connection *connection, Exchange &exchange)
{
    if (!exchange.reply && exchange.body) {
        enter(connection, Phase::Working);
        if (exchange.body->bytes().size() > largeBody && !m_stopping) {
            answerElsewhere(connection, exchange);
            return MHD_YES;
        }
        exchange.reply = answer(exchange);
    }
    return send(connection, exchange);
}

void RequestHandler::answerElsewhere(MHD_Connection *connection, Exchange &exchange)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_answeredElsewhere;
    }
    MHD_suspend_connection(connection);
    m_largeBodies.post([this, connection, &exchange](const std::atomic<bool> &) {
        exchange.reply = answer(exchange);
        MHD_resume_connection(connection);
        const std::lock_guard<std::mutex> lock(m_mutex);
        --m_answeredElsewhere;
        m_answered.notify_all();
    });
}

Reply RequestHandler::answer(const Exchange &exchange)
{
    try {
        const ServiceError error = exchange.body->error();
        return error ? errorReply(error) : m_endpoints.answer(exchange.head, exchange.body->bytes());
    } catch (const std::exception &) {
        return failure();
    }
}

MHD_Result RequestHandler::send(MHD_Connection *connection, Exchange &exchange)
{
    if (!exchange.reply) {
        return MHD_NO;
    }
    enter(connection, Phase::Replying);
    exchange.sent = queueReply(connection, exchange.head, *exchange.reply, exchange.closeAfterwards);
    if (exchange.sent < 0) {
        return MHD_NO;
    }
    m_watch.countBytes(stateOf(connection).id, static_cast<size_t>(exchange.sent));
    // The library has what it needs of them.
    exchange.reply->body.clear();
    exchange.reply->picture.reset();
    return MHD_YES;
}

void RequestHandler::requestCompleted(MHD_Connection *connection, void **exchange)
{
    const std::unique_ptr<Exchange> own(static_cast<Exchange *>(*exchange));
    *exchange = nullptr;
    if (own && own->reply) {
        logExchange(*own);
    }
    enter(connection, Phase::Idle);
}

void RequestHandler::enter(MHD_Connection *connection, Phase phase)
{
    m_watch.enter(stateOf(connection).id, phase);
}

void RequestHandler::stop()
{
    m_stopping = true;
    m_watch.stop();
    m_lingering.stop();
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_answered.wait(lock, [this] { return m_answeredElsewhere == 0; });
    }
    m_watch.waitUntilNone(lastReplies);
    m_largeBodies.stop();
}

} // namespace tavro::assistantservice
