#pragma once

#include "sigslot/connection.hpp"
#include "sigslot/detail/nulllock.hpp"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <type_traits>
#include <utility>
#include <vector>

namespace sigslot {

template <typename Lockable, typename... Args>
class signal_base;

/// A base class for receivers: connections made with a pointer to the derived object end with it.
///
/// The derived part is destroyed before the base. A class whose signals are emitted on other threads therefore calls
/// disconnect_all() first thing in its own destructor. Even then a slot that already runs on another thread is not
/// waited for.
template <typename Lockable>
class observer_base {
public:
    observer_base(const observer_base &) = delete;
    observer_base &operator=(const observer_base &) = delete;

protected:
    observer_base() = default;
    virtual ~observer_base() { disconnect_all(); }

    /// Ends all connections to this object. May be called more than once, and on any thread if Lockable is a real lock.
    void disconnect_all()
    {
        std::vector<scoped_connection> ended;
        const std::lock_guard<Lockable> lock(m_lock);
        m_connections.swap(ended);
    }

private:
    template <typename, typename...>
    friend class signal_base;

    void keep(const connection &made)
    {
        std::vector<scoped_connection> ended; // cppcheck-suppress variableScope ; goes after the lock
        const std::lock_guard<Lockable> lock(m_lock);
        if (m_connections.size() == m_connections.capacity())
            takeEnded(ended);
        m_connections.emplace_back(made);
    }

    // Without this, a receiver that lives long would collect the handles of all the signals that it survives.
    void takeEnded(std::vector<scoped_connection> &ended)
    {
        const auto firstEnded = std::partition(m_connections.begin(), m_connections.end(),
                                               [](const scoped_connection &kept) { return kept.connected(); });
        std::move(firstEnded, m_connections.end(), std::back_inserter(ended));
        m_connections.erase(firstEnded, m_connections.end());
    }

    Lockable m_lock;
    std::vector<scoped_connection> m_connections;
};

/// For receivers of signals that several threads use.
using observer = observer_base<std::mutex>;
/// For receivers whose signals and which themselves are used by one thread alone.
using observer_st = observer_base<detail::null_lock>;

namespace detail {

template <typename Lockable>
std::true_type converts_to_observer(const observer_base<Lockable> *);
std::false_type converts_to_observer(const void *);

template <typename Receiver>
constexpr bool is_observer_pointer()
{
    if constexpr (std::is_pointer_v<Receiver> && std::is_class_v<std::remove_pointer_t<Receiver>>)
        return decltype(converts_to_observer(std::declval<Receiver>()))::value;
    else
        return false;
}

} // namespace detail
} // namespace sigslot
