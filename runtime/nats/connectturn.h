#pragma once

#include <atomic>

namespace tavro::runtime {

/// Lets one connection of this process be made at a time: a ConnectGuard knows the socket of its attempt by nothing but
/// the time at which it was opened.
class ConnectTurn {
public:
    /// Waits until it is this attempt's turn, or until @p isHurried: then nobody wants the attempt any more.
    explicit ConnectTurn(const std::atomic_bool &isHurried);
    ~ConnectTurn();

    ConnectTurn(const ConnectTurn &) = delete;
    ConnectTurn &operator=(const ConnectTurn &) = delete;

    bool isHeld() const { return m_isHeld; }

private:
    bool m_isHeld = false;
};

} // namespace tavro::runtime
