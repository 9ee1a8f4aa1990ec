#include "http/httpserver.h"

#include "http/bodyreader.h"
#include "http/clientstream.h"
#include "http/connectionqueue.h"
#include "http/exchange.h"

#include <cstring>
#include <sys/socket.h>

namespace tavro::assistantservice {

namespace {

constexpr char picturesPath[] = "/pictures/";
constexpr char healthPath[] = "/healthz";
constexpr int requestsPerConnection = 100000;

// Without SO_REUSEPORT, which httplib sets by itself: two services would share one port and half of the polls would go
// to the one that does not know the request.
void setSocketOptions(socket_t socket)
{
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

bool startsWith(const std::string &text, const char *start)
{
    return text.compare(0, std::strlen(start), start) == 0;
}

Caller callerOf(const httplib::Request &request)
{
    return {QByteArray::fromStdString(request.get_header_value("token")),
            QByteArray::fromStdString(request.get_header_value("Host"))};
}

ServiceError wrongMethod(const char *method)
{
    return {ErrorCode::WrongMethod, QStringLiteral("This address takes %1 requests only.").arg(QLatin1String(method))};
}

ServiceError unknownPath()
{
    return {ErrorCode::NotFound, QStringLiteral("There is nothing at this address. Please check the service address.")};
}

// httplib's own refusals come without a body.
void describeRefusal(const httplib::Request &, httplib::Response &response)
{
    if (!response.body.empty()) {
        return;
    }
    const Reply reply =
        errorReply({static_cast<ErrorCode>(response.status),
                    QStringLiteral("The service cannot read this HTTP request (status %1).").arg(response.status)});
    currentExchange().code = reply.code;
    currentExchange().closeAfterwards = true;
    response.set_content(reply.body.toStdString(), reply.contentType.toStdString());
}

void describeException(const httplib::Request &, httplib::Response &response, const std::exception_ptr &)
{
    setReply(
        response,
        httpErrorReply({ErrorCode::EngineFailed, QStringLiteral("The assistant service failed at this request.")}));
}

} // namespace

HttpServer::HttpServer(const HttpSettings &settings, Assistant &assistant)
    : m_settings(settings)
    , m_assistant(assistant)
{
    set_tcp_nodelay(true);
    set_keep_alive_max_count(requestsPerConnection);
    set_keep_alive_timeout(std::chrono::duration_cast<std::chrono::seconds>(m_settings.keepAlive).count());
    set_socket_options(&setSocketOptions);
    new_task_queue = [this] {
        return new ConnectionQueue(m_settings.threads, m_settings.waitingConnections, m_wakeups);
    };
    set_pre_routing_handler([this](const auto &request, auto &response) { return answerOthers(request, response); });
    set_error_handler(httplib::Server::Handler(&describeRefusal));
    set_exception_handler(&describeException);
    set_logger(&logExchange);
    addEndpoint("/ai/texttotext/generate/", &Assistant::generateText);
    addEndpoint("/ai/texttoimage/generate/", &Assistant::generatePicture);
    addEndpoint("/ai/result/filter/", &Assistant::pollResult);
}

int HttpServer::bind(const std::string &host, int port)
{
    if (port == 0) {
        return std::max(0, bind_to_any_port(host));
    }
    return bind_to_port(host, port) ? port : 0;
}

void HttpServer::serve()
{
    if (!m_wakeups.isStopped()) {
        listen_after_bind();
    }
}

void HttpServer::stop()
{
    m_wakeups.stop();
    httplib::Server::stop();
}

bool HttpServer::process_and_close_socket(socket_t socket)
{
    ClientStream stream(socket, m_settings.clientLimit, m_wakeups);
    if (ConnectionQueue::isRefusing()) {
        return false;
    }
    bool open = stream.waitForRequest(m_settings.clientLimit, false);
    for (int left = requestsPerConnection; open; --left) {
        stream.startRequest();
        const Exchange &exchange = startExchange(stream);
        const bool last = left == 1 || m_wakeups.isStopped();
        bool closed = false;
        open = process_request(stream, last, closed, nullptr) && !closed && !last;
        if (exchange.closeAfterwards) {
            stream.lingerBeforeClose();
            return true;
        }
        open = open && stream.waitForRequest(m_settings.keepAlive, true);
    }
    return true;
}

void HttpServer::addEndpoint(const char *path, JsonEndpoint endpoint)
{
    m_posts.insert(path);
    Post(path, [this, endpoint](const auto &request, auto &response, const auto &reader) {
        answerPost(request, response, reader, endpoint);
    });
}

void HttpServer::answerPost(const httplib::Request &request, httplib::Response &response,
                            const httplib::ContentReader &reader, JsonEndpoint endpoint)
{
    BodyReader body(m_settings.largestBody);
    if (const ServiceError error = body.read(reader)) {
        currentExchange().closeAfterwards = true;
        setReply(response, errorReply(error));
        return;
    }
    currentExchange().received = body.bytes().size();
    setReply(response, (m_assistant.*endpoint)(callerOf(request), body.bytes()));
}

// Runs before any body is read: what is refused here must not make the service take in a body of any size.
httplib::Server::HandlerResponse HttpServer::answerOthers(const httplib::Request &request, httplib::Response &response)
{
    const bool post = request.method == "POST";
    if (post && m_posts.count(request.path) > 0 && !request.is_multipart_form_data()) {
        currentExchange().stream->startBody();
        return HandlerResponse::Unhandled;
    }
    currentExchange().closeAfterwards =
        post || request.has_header("Content-Length") || request.has_header("Transfer-Encoding");
    setReply(response, replyWithoutBody(request));
    return HandlerResponse::Handled;
}

Reply HttpServer::replyWithoutBody(const httplib::Request &request)
{
    if (m_posts.count(request.path) > 0) {
        return request.method == "POST"
            ? errorReply({ErrorCode::BadRequest, QStringLiteral("The request must be JSON, not a form.")})
            : httpErrorReply(wrongMethod("POST"));
    }
    const bool picture = startsWith(request.path, picturesPath);
    if (!picture && request.path != healthPath) {
        return httpErrorReply(unknownPath());
    }
    if (request.method != "GET" && request.method != "HEAD") {
        return httpErrorReply(wrongMethod("GET"));
    }
    if (picture) {
        return m_assistant.picture(QString::fromStdString(request.path.substr(std::strlen(picturesPath))));
    }
    return m_assistant.health();
}

} // namespace tavro::assistantservice
