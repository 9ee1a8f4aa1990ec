#pragma once

#include "openai/upstreamclient.h"
#include "serviceerror.h"

#include <mutex>

namespace tavro::assistantservice {

/// Finds out the model of a server that has just one, so that nobody has to name it. May be used by several threads.
class ModelChoice {
public:
    /// Keeps a reference to the client.
    explicit ModelChoice(const UpstreamClient &client);

    /// The model's name; asks the server the first time. An error where there is none or more than one.
    ServiceError find(const Patience &patience, QString &model);

private:
    const UpstreamClient &m_client;
    std::mutex m_mutex;
    QString m_model;
};

} // namespace tavro::assistantservice
