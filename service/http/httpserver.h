#pragma once

#include "assistant.h"
#include "http/wakeups.h"

#include <httplib.h>

#include <chrono>
#include <set>
#include <string>

namespace tavro::assistantservice {

struct HttpSettings {
    /// A longer request body is answered with the error form.
    qint64 largestBody = 32 * 1024 * 1024;
    /// For a client to send a request, and again to take the reply.
    std::chrono::milliseconds clientLimit{30000};
    /// An idle connection is kept for so long, unless its thread is needed. Longer than the panel's poll interval.
    std::chrono::milliseconds keepAlive{75000};
    int threads = 64;
    int waitingConnections = 512;
};

/// Speaks HTTP for an Assistant. bind() and serve() are called once each, in this order.
class HttpServer : private httplib::Server {
public:
    HttpServer(const HttpSettings &settings, Assistant &assistant);

    /// Takes connections from here on (the kernel queues them until serve()). `port` 0 picks a free one. Returns the
    /// port, or 0 where the address cannot be had.
    int bind(const std::string &host, int port);
    /// Answers until stop(), then returns once every running reply is out or its time is over.
    void serve();
    /// From any thread, while serve() runs or before it.
    void stop();

private:
    using JsonEndpoint = Reply (Assistant::*)(const Caller &, const QByteArray &);

    bool process_and_close_socket(socket_t socket) override;
    void addEndpoint(const char *path, JsonEndpoint endpoint);
    void answerPost(const httplib::Request &request, httplib::Response &response, const httplib::ContentReader &reader,
                    JsonEndpoint endpoint);
    HandlerResponse answerOthers(const httplib::Request &request, httplib::Response &response);
    int answerExpectation(const httplib::Request &request, httplib::Response &response);
    ServiceError refusal(const httplib::Request &request) const;
    Reply replyWithoutBody(const httplib::Request &request);

    const HttpSettings m_settings;
    Assistant &m_assistant;
    Wakeups m_wakeups;
    std::set<std::string> m_posts;
};

} // namespace tavro::assistantservice
