#pragma once

#include "sigslot/detail/slotstate.hpp"

#include <memory>
#include <utility>

namespace sigslot {

class connection_blocker;

/// A handle to one slot of one signal.
///
/// It does not keep the connection: a handle that goes away leaves the slot connected, and a handle may outlive its
/// signal. Copies are handles to the same slot. All of it may be used from any thread, also inside slots; one handle
/// object is not to be assigned on one thread while another uses it.
class connection {
public:
    /// A handle to nothing: not valid, and every operation is without effect.
    connection() = default;
    explicit connection(std::weak_ptr<detail::slot_state> state) noexcept
        : m_state(std::move(state))
    { }

    /// Whether the slot still exists.
    bool valid() const noexcept { return !m_state.expired(); }

    /// Whether the slot would be called: not disconnected, and its tracked receiver not gone.
    bool connected() const
    {
        const auto state = m_state.lock();
        return state && state->connected();
    }

    /// Disconnects the slot, at once: a running emission that has not come to it yet leaves it out. A call of the slot
    /// that is running on another thread is not waited for. True only for the call that disconnected it.
    bool disconnect()
    {
        const auto state = m_state.lock();
        return state && state->disconnect();
    }

    /// Whether the slot is left out of emissions at present.
    bool blocked() const
    {
        const auto state = m_state.lock();
        return state && state->blocked();
    }

    /// Leaves the slot out, at once, until unblock(). Calls do not add up: one unblock() is enough.
    void block() { set_blocked(true); }
    void unblock() { set_blocked(false); }

    /// Blocks the slot for as long as the returned object lives.
    connection_blocker blocker() const;

private:
    friend class connection_blocker;

    void set_blocked(bool blocked) const
    {
        if (const auto state = m_state.lock())
            state->set_blocked(blocked);
    }

    std::weak_ptr<detail::slot_state> m_state;
};

/// Blocks a slot from its construction to its destruction, which unblocks in any case. Blockers of one slot do not
/// nest.
class connection_blocker {
public:
    /// Blocks nothing.
    connection_blocker() = default;
    explicit connection_blocker(connection blocked)
        : m_blocked(std::move(blocked))
    {
        m_blocked.set_blocked(true);
    }
    connection_blocker(connection_blocker &&other) noexcept
        : m_blocked(std::exchange(other.m_blocked, connection()))
    { }
    connection_blocker &operator=(connection_blocker &&other) noexcept
    {
        connection_blocker taken(std::move(other));
        std::swap(m_blocked, taken.m_blocked);
        return *this;
    }
    ~connection_blocker() { m_blocked.set_blocked(false); }

private:
    connection m_blocked;
};

inline connection_blocker connection::blocker() const
{
    return connection_blocker(*this);
}

/// A connection that is disconnected when this object is destroyed or assigned to.
class scoped_connection : public connection {
public:
    scoped_connection() = default;
    // Implicit, so that what connect() returns can be kept in one.
    // cppcheck-suppress noExplicitConstructor
    scoped_connection(const connection &kept) noexcept
        : connection(kept)
    { }
    // cppcheck-suppress noExplicitConstructor
    scoped_connection(connection &&kept) noexcept
        : connection(std::move(kept))
    { }
    scoped_connection(scoped_connection &&other) noexcept
        : connection(other.release())
    { }
    // Not noexcept: what the disconnected slot holds may throw when it is destroyed.
    scoped_connection &operator=(scoped_connection &&other) // NOLINT(performance-noexcept-move-constructor)
    {
        if (this != &other) {
            disconnect();
            connection::operator=(other.release());
        }
        return *this;
    }
    ~scoped_connection() { disconnect(); }

private:
    connection release() noexcept { return std::exchange(static_cast<connection &>(*this), connection()); }
};

} // namespace sigslot
