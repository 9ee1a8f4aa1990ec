#pragma once

#include "sigslot/detail/sharedlist.hpp"
#include "sigslot/detail/slot.hpp"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <iterator>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace sigslot::detail {

/// What a signal consists of. It stays where it is when the signal object moves, so slots and handles can refer to it,
/// and a handle that disconnects while the signal dies on another thread keeps it for that moment.
template <typename Lockable, typename... Args>
class core final : public slot_owner {
public:
    using slot_pointer = std::shared_ptr<slot<Args...>>;
    using slot_list = shared_list<slot_pointer>;

    // Nothing of this object is used once the slots run: one of them may destroy it.
    template <typename... Given>
    void notify(Given &...args) const
    {
        if (m_blocked)
            return;
        const slot_list running = list();
        for (const slot_pointer &next : running.items())
            next->run(args...);
    }

    void add(slot_pointer added)
    {
        const std::lock_guard<Lockable> lock(m_lock);
        auto &items = m_list.edit();
        const auto behindGroup =
            std::upper_bound(items.begin(), items.end(), added->group(),
                             [](group_id group, const slot_pointer &other) { return group < other->group(); });
        items.insert(behindGroup, std::move(added));
    }

    void remove(const slot_state &gone) override
    {
        remove_if([&gone](const slot<Args...> &listed) { return &listed == &gone; });
    }

    template <typename Condition>
    std::size_t remove_if(Condition condition)
    {
        // Goes after the lock: what a slot holds may do anything when it is destroyed, also use this signal.
        std::vector<slot_pointer> removed;
        const std::lock_guard<Lockable> lock(m_lock);
        const auto stays = [&condition](const slot_pointer &listed) { return !condition(*listed); };
        if (std::all_of(m_list.items().begin(), m_list.items().end(), stays))
            return 0;
        auto &items = m_list.edit();
        const auto firstRemoved = std::stable_partition(items.begin(), items.end(), stays);
        std::move(firstRemoved, items.end(), std::back_inserter(removed));
        items.erase(firstRemoved, items.end());
        return removed.size();
    }

    void clear()
    {
        slot_list removed;
        const std::lock_guard<Lockable> lock(m_lock);
        std::swap(m_list, removed);
    }

    std::size_t count() const
    {
        const std::lock_guard<Lockable> lock(m_lock);
        return m_list.items().size();
    }

    bool blocked() const noexcept { return m_blocked; }
    void set_blocked(bool blocked) noexcept { m_blocked = blocked; }

private:
    slot_list list() const
    {
        const std::lock_guard<Lockable> lock(m_lock);
        return m_list;
    }

    mutable Lockable m_lock;
    slot_list m_list;
    std::atomic<bool> m_blocked{false};
};

/// The slot that emits another signal.
template <typename Core, typename... Args>
struct relay {
    template <typename... Given, std::enable_if_t<std::is_invocable_v<void (*)(Args...), Given &...>, int> = 0>
    void operator()(Given &...args) const
    {
        core->notify(args...);
    }

    const Core *core;
};

} // namespace sigslot::detail
