#pragma once

#include "replies.h"

#include <httplib.h>

#include <chrono>

namespace tavro::assistantservice {

class ClientStream;

/// The request that this thread is answering. httplib hands its handlers neither the stream nor a place for own data.
struct Exchange {
    ClientStream *stream = nullptr;
    std::chrono::steady_clock::time_point start;
    int code = 0;
    QString requestId;
    qint64 received = 0;
    bool closeAfterwards = false;
};

Exchange &startExchange(ClientStream &stream);
Exchange &currentExchange();

/// Makes `reply` the answer of the current exchange.
void setReply(httplib::Response &response, const Reply &reply);

/// Writes the one log line of an exchange.
void logExchange(const httplib::Request &request, const httplib::Response &response);

} // namespace tavro::assistantservice
