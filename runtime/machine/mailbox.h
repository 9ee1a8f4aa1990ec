#pragma once

#include "machine/callhandlers.h"
#include "machine/qtdispatcher.h"

#include <atomic>
#include <cstddef>
#include <memory>

namespace tavro::runtime {

/// Where a runtime's messages are put, from any thread. Copies are the same mailbox; one may outlive the runtime: what
/// is put then is dropped.
class Mailbox {
public:
    /// The most bytes that may wait for a thread that does not come back to its event loop.
    static constexpr std::size_t maxWaiting = 64 * 1024 * 1024;

    Mailbox(std::shared_ptr<TaskLine> line, std::shared_ptr<CallHandlers> handlers);

    /// False where it is full.
    bool put(std::shared_ptr<const Message> message) const;

private:
    std::shared_ptr<TaskLine> m_line;
    std::shared_ptr<CallHandlers> m_handlers;
    std::shared_ptr<std::atomic_size_t> m_waiting = std::make_shared<std::atomic_size_t>(0);
};

} // namespace tavro::runtime
