#pragma once

#include <memory>

namespace tavro::runtime {

class InProcessMembers;

/// Joins runtimes within one process, as a broker joins machines. It may go before its runtimes: they then stay joined
/// among themselves.
class InProcessBus {
public:
    /// The most bytes that a message may have; a broker's usual limit, so that a host that grows from one machine to
    /// several meets no new one.
    static constexpr unsigned int defaultMaxPayload = 1024 * 1024;

    explicit InProcessBus(unsigned int maxPayload = defaultMaxPayload); ///< bytes
    ~InProcessBus();

    InProcessBus(const InProcessBus &) = delete;
    InProcessBus &operator=(const InProcessBus &) = delete;

private:
    friend class InProcessRuntime;
    const std::shared_ptr<InProcessMembers> m_members;
};

} // namespace tavro::runtime
