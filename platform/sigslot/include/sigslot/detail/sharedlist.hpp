#pragma once

#include <atomic>
#include <cstddef>
#include <utility>
#include <vector>

namespace sigslot::detail {

/// A list that is shared when copied and copied when changed.
///
/// Copies of one list may be read and released on any thread. Copying from and editing the same object need a lock
/// around them. An empty list owns no memory.
template <typename Item>
class shared_list {
public:
    using items_type = std::vector<Item>;

    shared_list() = default;
    shared_list(const shared_list &other) noexcept
        : m_node(other.m_node)
    {
        if (m_node)
            m_node->owners.fetch_add(1, std::memory_order_relaxed);
    }
    shared_list(shared_list &&other) noexcept
        : m_node(std::exchange(other.m_node, nullptr))
    { }
    shared_list &operator=(shared_list other) noexcept
    {
        std::swap(m_node, other.m_node);
        return *this;
    }
    ~shared_list()
    {
        if (m_node && m_node->owners.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete m_node;
    }

    const items_type &items() const
    {
        static const items_type none;
        return m_node ? m_node->items : none;
    }

    /// The items for a change; other copies of the list do not see it.
    items_type &edit()
    {
        if (!m_node)
            m_node = new node;
        else if (!alone())
            *this = shared_list(new node{m_node->items});
        return m_node->items;
    }

private:
    struct node {
        items_type items;
        std::atomic<std::size_t> owners{1};
    };

    explicit shared_list(node *fresh) noexcept
        : m_node(fresh)
    { }

    // Acquires: what another thread read before it released its copy must not be overtaken by our change.
    bool alone() const noexcept { return m_node->owners.load(std::memory_order_acquire) == 1; }

    node *m_node = nullptr;
};

} // namespace sigslot::detail
