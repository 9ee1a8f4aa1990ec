#pragma once

#include "support/fakeruntime.h"

/// A fake runtime whose messages arrive at another one.
class JoinedRuntime : public tavro::testsupport::FakeRuntime {
public:
    enum class Delivery {
        Direct, ///< inside the sending call
        Queued, ///< by this thread's event loop
        OtherThread, ///< on a thread of the receiving machine's runtime
    };

    using FakeRuntime::FakeRuntime;

    /// Joins two machines. Both must outlive every message under way: see drain().
    static void join(JoinedRuntime &one, JoinedRuntime &other, Delivery delivery);

    void sendToServer(const char *name, const char *data, unsigned int size) override;
    void sendToClients(const char *name, const char *data, unsigned int size) override;

    /// Blocks until the messages have been delivered that were sent to this machine on its other thread so far.
    bool drain();

private:
    void passOn(const char *name, const char *data, unsigned int size);

    JoinedRuntime *m_other = nullptr;
    Delivery m_delivery = Delivery::Direct;
};
