#pragma once

#include "openai/upstreamclient.h"

#include <atomic>
#include <thread>

namespace tavro::assistantservice {

/// Asks a server for its models, once and in the background, so that the log tells at the start what is wrong with it.
/// Ends early with the object.
class UpstreamCheck {
public:
    /// Keeps a reference to the client.
    explicit UpstreamCheck(const UpstreamClient &client);
    ~UpstreamCheck();
    UpstreamCheck(const UpstreamCheck &) = delete;
    UpstreamCheck &operator=(const UpstreamCheck &) = delete;

private:
    void run();

    const UpstreamClient &m_client;
    std::atomic<bool> m_ending{false};
    std::thread m_thread;
};

} // namespace tavro::assistantservice
