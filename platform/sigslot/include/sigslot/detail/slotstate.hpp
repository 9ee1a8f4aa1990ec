#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <utility>

namespace sigslot {

/// Slots run in ascending order of their group, and within a group in the order of their connection.
using group_id = std::int32_t;

namespace detail {

class slot_state;

/// Where a slot is listed, and from where it is removed when its handle disconnects it.
class slot_owner {
public:
    virtual void remove(const slot_state &gone) = 0;

protected:
    ~slot_owner() = default;
};

/// The part of a slot that its connection handles see. Usable from any thread.
class slot_state : public std::enable_shared_from_this<slot_state> {
public:
    slot_state(std::weak_ptr<slot_owner> owner, group_id group)
        : m_owner(std::move(owner))
        , m_group(group)
    { }
    virtual ~slot_state() = default;

    slot_state(const slot_state &) = delete;
    slot_state &operator=(const slot_state &) = delete;

    group_id group() const noexcept { return m_group; }

    virtual bool connected() const { return m_connected; }
    bool disconnect()
    {
        if (!m_connected.exchange(false))
            return false;
        if (const auto owner = m_owner.lock())
            owner->remove(*this);
        return true;
    }

    bool blocked() const noexcept { return m_blocked; }
    void set_blocked(bool blocked) noexcept { m_blocked = blocked; }

protected:
    bool may_run() const noexcept { return m_connected && !m_blocked; }

private:
    const std::weak_ptr<slot_owner> m_owner;
    const group_id m_group;
    std::atomic<bool> m_connected{true};
    std::atomic<bool> m_blocked{false};
};

} // namespace detail
} // namespace sigslot
