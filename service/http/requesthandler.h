#pragma once

#include "http/connectionwatch.h"
#include "http/endpoints.h"
#include "http/exchange.h"
#include "http/lingeringsockets.h"
#include "workerpool.h"

#include <microhttpd.h>

#include <atomic>

namespace tavro::assistantservice {

/// What the service does at each event of the HTTP library, which reports them all on its one thread.
///
/// Small requests are answered there. A large one takes its time to be read, so that happens on a thread of its own,
/// one after the other, which also bounds the memory that reading takes.
class RequestHandler {
public:
    RequestHandler(Endpoints endpoints, qint64 largestBody, const ConnectionWatch::Limits &limits);

    void connectionOpened(MHD_Connection *connection, void **state);
    void connectionClosed(MHD_Connection *connection, void **state);

    /// The head of a request; what is kept of it goes into `*exchange`.
    MHD_Result takeHead(MHD_Connection *connection, const char *method, const char *path, void **exchange);
    /// The next bytes of its body.
    MHD_Result takeBody(MHD_Connection *connection, Exchange &exchange, const char *data, size_t size);
    /// The whole request is there, or its reply, which answerElsewhere() was to make.
    MHD_Result takeEnd(MHD_Connection *connection, Exchange &exchange);
    /// The reply is out, or nobody is there to take it.
    void requestCompleted(MHD_Connection *connection, void **exchange);

    /// From any other thread: ends what waits for a request, gives all others a moment, and returns once they are gone
    /// or that moment is over. Nothing is answered on another thread afterwards.
    void stop();

private:
    void answerElsewhere(MHD_Connection *connection, Exchange &exchange);
    MHD_Result send(MHD_Connection *connection, Exchange &exchange);
    Reply answer(const Exchange &exchange);
    void enter(MHD_Connection *connection, ConnectionWatch::Phase phase);

    Endpoints m_endpoints;
    BodyBudget m_budget;
    ConnectionWatch m_watch;
    LingeringSockets m_lingering;
    std::atomic<bool> m_stopping{false};
    std::mutex m_mutex;
    std::condition_variable m_answered;
    int m_answeredElsewhere = 0;
    WorkerPool m_largeBodies{1};
};

} // namespace tavro::assistantservice
