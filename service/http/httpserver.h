#pragma once

#include "assistant.h"
#include "callerrules.h"

#include <chrono>
#include <memory>
#include <string>

namespace tavro::assistantservice {

struct HttpSettings {
    /// A longer request body is answered with the error form.
    qint64 largestBody = 32 * 1024 * 1024;
    /// For a client to send a request, and again to take the reply.
    std::chrono::milliseconds clientLimit{30000};
    /// An idle connection is kept for so long. Longer than the panel's poll interval.
    std::chrono::milliseconds keepAlive{75000};
    /// Beyond so many, connections that wait for a request give way to new ones. Fewer where the process may not have
    /// so many files open.
    int connections = 2000;
};

/// Speaks HTTP for an Assistant. The functions are called in the order in which they stand.
///
/// One thread serves all connections and reads small requests; a large one is read on a thread of its own, so that it
/// keeps nobody waiting.
class HttpServer {
public:
    HttpServer(const HttpSettings &settings, Assistant &assistant);
    /// Stops it.
    ~HttpServer();

    /// Takes connections from here on (the kernel queues them until start()). `port` 0 picks a free one. Returns the
    /// port, or 0 where the address cannot be had; `errno` then says why, or is 0 where the name is unknown.
    int bind(const std::string &host, int port);
    /// Answers from here on. False where the system does not allow it; `errno` then says why.
    bool start(CallerRules rules);
    /// Returns once every running reply is out or its time is over. A second call does nothing.
    void stop();

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace tavro::assistantservice
