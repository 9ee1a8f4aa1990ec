#include "http/httpserver.h"

#include "http/listensocket.h"
#include "http/requesthandler.h"
#include "servicelog.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <sys/resource.h>
#include <unistd.h>

namespace tavro::assistantservice {

namespace {

// For the head, the chunk lines and the trailers of a request, and for what goes out. The library answers what does not
// fit with 413, 414, 431 or 500.
constexpr size_t memoryPerConnection = 64 * 1024;
// Connections that have been told to end, and what the service itself keeps open.
constexpr int spareDescriptors = 192;
constexpr int leastConnections = 64;

// The usual limit of 1,024 would be used up by the silent connections of one careless program.
int descriptorLimit(int wanted)
{
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    const auto enough = static_cast<rlim_t>(wanted);
    rlimit raised = limit;
    raised.rlim_cur = std::min(limit.rlim_max, enough);
    if (limit.rlim_cur < raised.rlim_cur && ::setrlimit(RLIMIT_NOFILE, &raised) == 0) {
        limit = raised;
    }
    return static_cast<int>(std::min(limit.rlim_cur, enough));
}

int connectionsAllowed(int wanted)
{
    return std::max(leastConnections, descriptorLimit(wanted + spareDescriptors) - spareDescriptors);
}

void logLibraryLine(void *, const char *format, va_list values)
{
    std::array<char, 512> line{};
    std::vsnprintf(line.data(), line.size(), format, values);
    serviceLog().debug("event=http text=\"{}\"", QByteArray(line.data()).simplified().replace('"', '\'').toStdString());
}

// No address of the service needs it, and a decoded one could hold anything.
size_t keepEncoded(void *, MHD_Connection *, char *text)
{
    return std::strlen(text);
}

// No exception may reach the library, which is written in C: it ends the request, and not the service.
template <typename Work>
MHD_Result guarded(Work work)
{
    try {
        return work();
    } catch (const std::exception &) {
        return MHD_NO;
    }
}

MHD_Result access(void *handler, MHD_Connection *connection, const char *path, const char *method, const char *,
                  const char *data, size_t *size, void **state)
{
    auto &self = *static_cast<RequestHandler *>(handler);
    return guarded([&] {
        if (*state == nullptr) {
            return self.takeHead(connection, method, path, state);
        }
        Exchange &exchange = *static_cast<Exchange *>(*state);
        if (*size == 0) {
            return self.takeEnd(connection, exchange);
        }
        return self.takeBody(connection, exchange, data, std::exchange(*size, 0));
    });
}

void completed(void *handler, MHD_Connection *connection, void **exchange, MHD_RequestTerminationCode)
{
    static_cast<RequestHandler *>(handler)->requestCompleted(connection, exchange);
}

void connectionChanged(void *handler, MHD_Connection *connection, void **state, MHD_ConnectionNotificationCode what)
{
    auto &self = *static_cast<RequestHandler *>(handler);
    if (what == MHD_CONNECTION_NOTIFY_STARTED) {
        self.connectionOpened(connection, state);
    } else {
        self.connectionClosed(connection, state);
    }
}

} // namespace

class HttpServer::Private {
public:
    MHD_Daemon *startDaemon();

    HttpSettings settings;
    Assistant *assistant = nullptr;
    int connections = 0;
    ListenSocket socket;
    std::unique_ptr<RequestHandler> handler;
    MHD_Daemon *daemon = nullptr;
};

MHD_Daemon *HttpServer::Private::startDaemon()
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(settings.keepAlive).count();
    return MHD_start_daemon(MHD_USE_EPOLL_INTERNAL_THREAD | MHD_USE_ITC | MHD_ALLOW_SUSPEND_RESUME | MHD_USE_ERROR_LOG,
                            0, nullptr, nullptr, &access, handler.get(), MHD_OPTION_EXTERNAL_LOGGER, &logLibraryLine,
                            nullptr, MHD_OPTION_LISTEN_SOCKET, socket.descriptor(), MHD_OPTION_CONNECTION_LIMIT,
                            static_cast<unsigned int>(connections + spareDescriptors / 2),
                            MHD_OPTION_CONNECTION_MEMORY_LIMIT, memoryPerConnection, MHD_OPTION_CONNECTION_TIMEOUT,
                            static_cast<unsigned int>(seconds), MHD_OPTION_UNESCAPE_CALLBACK, &keepEncoded, nullptr,
                            MHD_OPTION_NOTIFY_COMPLETED, &completed, handler.get(), MHD_OPTION_NOTIFY_CONNECTION,
                            &connectionChanged, handler.get(), MHD_OPTION_END);
}

HttpServer::HttpServer(const HttpSettings &settings, Assistant &assistant)
    : d(std::make_unique<Private>())
{
    d->settings = settings;
    d->assistant = &assistant;
    d->connections = connectionsAllowed(settings.connections);
}

HttpServer::~HttpServer()
{
    stop();
}

int HttpServer::bind(const std::string &host, int port)
{
    return d->socket.open(host, port);
}

bool HttpServer::start(CallerRules rules)
{
    const HttpSettings &settings = d->settings;
    d->handler = std::make_unique<RequestHandler>(
        Endpoints(*d->assistant, std::move(rules), settings.largestBody), settings.largestBody,
        ConnectionWatch::Limits{settings.clientLimit, settings.keepAlive, static_cast<size_t>(d->connections)});
    errno = 0;
    d->daemon = d->startDaemon();
    return d->daemon != nullptr;
}

void HttpServer::stop()
{
    if (d->daemon == nullptr) {
        return;
    }
    // The library hands the socket back and takes no more connections.
    MHD_quiesce_daemon(d->daemon);
    d->handler->stop();
    MHD_stop_daemon(d->daemon);
    d->daemon = nullptr;
}

} // namespace tavro::assistantservice
