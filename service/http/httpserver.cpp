#include "http/httpserver.h"

#include "http/bodyhead.h"
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
// A new connection keeps its thread for so long, also where others wait for one.
constexpr std::chrono::milliseconds patienceUnderLoad{1000};

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
    set_expect_100_continue_handler(
        [this](const auto &request, auto &response) { return answerExpectation(request, response); });
    set_error_handler(httplib::Server::Handler(&describeRefusal));
    set_exception_handler(&describeException);
    set_logger(&logExchange);
    addEndpoint("/ai/texttotext/generate/", &Assistant::generateText);
    addEndpoint("/ai/texttoimage/generate/", &Assistant::generatePicture);
    addEndpoint("/ai/result/filter/", &Assistant::pollResult);
}

int HttpServer::bind(const std::string &host, int port)
{
    const int bound = port == 0 ? std::max(0, bind_to_any_port(host)) : bind_to_port(host, port) ? port : 0;
    if (bound > 0) {
        // httplib lets five connections wait to be taken. Of a larger burst the kernel would drop the rest, and their
        // clients try again only after a second or more.
        ::listen(svr_sock_, SOMAXCONN);
    }
    return bound;
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
    if (ConnectionQueue::isRefusing() || m_wakeups.isStopped()) {
        return false;
    }
    bool open = stream.waitForRequest(m_settings.clientLimit, patienceUnderLoad);
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
        open = open && stream.waitForRequest(m_settings.keepAlive, std::chrono::milliseconds(0));
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
    const bool endpoint = post && m_posts.count(request.path) > 0;
    const ServiceError error = endpoint ? refusal(request) : ServiceError();
    if (endpoint && !error) {
        currentExchange().stream->startBody();
        return HandlerResponse::Unhandled;
    }
    currentExchange().closeAfterwards =
        post || request.has_header("Content-Length") || request.has_header("Transfer-Encoding");
    if (currentExchange().closeAfterwards) {
        response.set_header("Connection", "close");
    }
    setReply(response, endpoint ? errorReply(error) : replyWithoutBody(request));
    return HandlerResponse::Handled;
}

// 100 lets the client send its body. Any other answer goes out as it is: httplib adds no length to it.
int HttpServer::answerExpectation(const httplib::Request &request, httplib::Response &response)
{
    if (answerOthers(request, response) == HandlerResponse::Unhandled) {
        return 100;
    }
    response.set_header("Content-Length", std::to_string(response.body.size()));
    return response.status;
}

// Why a request to an endpoint is answered without reading its body.
ServiceError HttpServer::refusal(const httplib::Request &request) const
{
    if (const ServiceError error = m_assistant.checkToken(callerOf(request))) {
        return error;
    }
    if (request.is_multipart_form_data()) {
        return {ErrorCode::BadRequest, QStringLiteral("The request must be JSON, not a form.")};
    }
    return checkBodyHead(request, m_settings.largestBody);
}

Reply HttpServer::replyWithoutBody(const httplib::Request &request)
{
    if (m_posts.count(request.path) > 0) {
        return httpErrorReply(wrongMethod("POST"));
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
