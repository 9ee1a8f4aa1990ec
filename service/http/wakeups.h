#pragma once

#include <atomic>

namespace tavro::assistantservice {

/// Two signals that a thread waiting on a client's socket also listens to: the service stops, and a new connection
/// needs the thread more than an idle one does. All functions may be called on any thread.
class Wakeups {
public:
    Wakeups();
    ~Wakeups();
    Wakeups(const Wakeups &) = delete;
    Wakeups &operator=(const Wakeups &) = delete;

    /// Stays set.
    void stop();
    bool isStopped() const { return m_stopped; }

    /// Asks for one idle connection to give way.
    void askForThread();
    /// True for exactly one caller after each askForThread().
    bool takeThreadRequest();

    /// File descriptors that are readable while the signal stands.
    int stopDescriptor() const { return m_stop; }
    int threadRequestDescriptor() const { return m_threadRequests; }

private:
    const int m_stop;
    const int m_threadRequests;
    std::atomic<bool> m_stopped{false};
};

} // namespace tavro::assistantservice
