#pragma once

#include "sigslot/connection.hpp"
#include "sigslot/detail/core.hpp"
#include "sigslot/detail/nulllock.hpp"
#include "sigslot/detail/parameters.hpp"
#include "sigslot/detail/target.hpp"
#include "sigslot/observer.hpp"

#include <cstddef>
#include <memory>
#include <mutex>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace sigslot {

/// A list of slots that are called, one after the other, whenever the signal is called.
///
/// **Slots.** Anything that can be called with lvalues of Args; what it returns is dropped. Every slot gets the
/// arguments themselves: what one writes to a T& the next one reads, a const T& copies nothing, a T by value is copied
/// for each slot, nothing is moved.
///
/// **Order.** Ascending groups; in a group the order of connection, whatever was disconnected in between.
///
/// **Emission.** It runs on the calling thread, over the slots that were connected when it began, without holding the
/// lock. So a slot may use its signal in every way, also emit and destroy it. Slots connected meanwhile run from the
/// next emission on. Slots disconnected or blocked by their handle are left out at once; those removed by the signal's
/// own disconnect functions, and by its destruction, are still called by an emission that runs already. What a slot
/// throws reaches the emitter, and the slots behind it are not called.
///
/// **Threads.** With a real Lockable everything but moving and destroying may be done on any thread at any time. The
/// slots of emissions on several threads run in parallel.
///
/// **Lifetime.** A connection lasts until it is disconnected or the signal dies. A slot with a raw pointer does not
/// watch the object: disconnect before the object dies, or use an observer, a tracked receiver or a scoped_connection.
/// A tracked receiver is kept alive during the call; its slot is removed by the first emission after its death.
template <typename Lockable, typename... Args>
class signal_base final {
    static_assert(!(std::is_rvalue_reference_v<Args> || ...),
                  "all slots get the same argument, so none may consume it");

    using plain = detail::parameters<Args...>;
    using extended = detail::parameters<connection &, Args...>;

    template <typename F>
    static constexpr bool is_function_v =
        detail::is_method_v<
            F> || detail::is_function_pointer_v<F> || (std::is_class_v<F> && (plain::template fit<F &>() || extended::template fit<F &>()));

    template <typename R>
    static constexpr bool is_receiver_v =
        !is_function_v<R> && (std::is_pointer_v<R> || (std::is_class_v<R> && detail::is_trackable_v<R>));

public:
    signal_base()
        : m_core(make_core())
    { }

    /// Takes the slots, and whether it is blocked, from the other signal, which is then like a new one. The handles and
    /// running emissions of the slots stay good. No other thread may use either signal meanwhile.
    // Not noexcept: the other signal stays usable, which takes memory.
    signal_base(signal_base &&other) // NOLINT(performance-noexcept-move-constructor)
        : m_core(std::exchange(other.m_core, make_core()))
    { }
    signal_base &operator=(signal_base &&other) // NOLINT(performance-noexcept-move-constructor)
    {
        if (this != &other) {
            disconnect_all();
            m_core = std::exchange(other.m_core, make_core());
        }
        return *this;
    }
    virtual ~signal_base() { disconnect_all(); }

    signal_base(const signal_base &) = delete;
    signal_base &operator=(const signal_base &) = delete;

    /// Emits: calls all slots that are neither disconnected nor blocked, unless the signal itself is blocked.
    template <typename... Given>
    void operator()(Given &&...args) const
    {
        static_assert(std::is_invocable_v<void (*)(Args...), Given &...>, "these are not the signal's arguments");
        m_core->notify(args...);
    }

    /// Connects a function or function object, of which the slot keeps a copy.
    template <typename F, std::enable_if_t<plain::template fit<F>(), int> = 0>
    connection connect(F &&function, group_id group = 0)
    {
        return add<false>(detail::make_target(std::forward<F>(function)), group);
    }

    /// Connects a function with its receiver:
    /// - a member function and a pointer to its object, which must outlive the connection;
    /// - the same where the object is an observer, which ends the connection when it dies;
    /// - a member function and a trackable object (std::shared_ptr, std::weak_ptr, with an adapter others);
    /// - a function or function object and a trackable object, which it is not called without.
    template <typename F, typename R, std::enable_if_t<plain::template fit<F, R>(), int> = 0>
    connection connect(F &&function, R &&receiver, group_id group = 0)
    {
        return add<false>(std::forward<F>(function), receiver, group);
    }

    /// Like connect(), for slots whose first parameter is their own connection, as connection &.
    template <typename F, std::enable_if_t<extended::template fit<F>(), int> = 0>
    connection connect_extended(F &&function, group_id group = 0)
    {
        return add<true>(detail::make_target(std::forward<F>(function)), group);
    }

    template <typename F, typename R, std::enable_if_t<extended::template fit<F, R>(), int> = 0>
    connection connect_extended(F &&function, R &&receiver, group_id group = 0)
    {
        return add<true>(std::forward<F>(function), receiver, group);
    }

    /// Like connect(), for a connection that ends with the returned object.
    template <typename... Given>
    scoped_connection connect_scoped(Given &&...given)
    {
        return connect(std::forward<Given>(given)...);
    }

    /// Removes the slots of this function, whatever their receiver. Function and member function pointers are compared
    /// by value, function objects by their type. Like the other disconnect functions it returns the number of slots
    /// removed.
    template <typename F, std::enable_if_t<is_function_v<std::decay_t<F>>, int> = 0>
    std::size_t disconnect(const F &function)
    {
        return with_key(function, [this](const detail::function_key &key) {
            return m_core->remove_if([&key](const auto &listed) { return listed.calls(key); });
        });
    }

    /// Removes the slots of this receiver: a pointer to it, or the trackable object.
    template <typename R, std::enable_if_t<is_receiver_v<std::decay_t<R>>, int> = 0>
    std::size_t disconnect(const R &receiver)
    {
        const void *object = detail::receiver_address(receiver);
        return m_core->remove_if([object](const auto &listed) { return object && listed.object() == object; });
    }

    /// Removes the slots of this function and this receiver.
    template <typename F, typename R,
              std::enable_if_t<is_function_v<std::decay_t<F>> && is_receiver_v<std::decay_t<R>>, int> = 0>
    std::size_t disconnect(const F &function, const R &receiver)
    {
        const void *object = detail::receiver_address(receiver);
        return with_key(function, [this, object](const detail::function_key &key) {
            return m_core->remove_if([&key, object](const auto &listed) {
                return object && listed.object() == object && listed.calls(key);
            });
        });
    }

    /// Removes the slots of this group.
    std::size_t disconnect(group_id group)
    {
        return m_core->remove_if([group](const auto &listed) { return listed.group() == group; });
    }

    /// Removes all slots.
    void disconnect_all() { m_core->clear(); }

    /// The number of slots, with blocked ones and those whose tracked receiver died since the last emission.
    std::size_t slot_count() const { return m_core->count(); }

    /// Makes emissions that begin from now on call nothing, until unblock().
    void block() noexcept { m_core->set_blocked(true); }
    void unblock() noexcept { m_core->set_blocked(false); }
    bool blocked() const noexcept { return m_core->blocked(); }

private:
    using core_type = detail::core<Lockable, Args...>;

    template <typename LockA, typename... ArgsA, typename LockB, typename... ArgsB>
    friend connection connect(signal_base<LockA, ArgsA...> &, signal_base<LockB, ArgsB...> &, group_id);

    static std::shared_ptr<core_type> make_core() { return std::make_shared<core_type>(); }

    template <bool Extended, typename Target>
    connection add(Target target, group_id group)
    {
        auto added = std::make_shared<detail::target_slot<Extended, Target, Args...>>(m_core, group, std::move(target));
        m_core->add(added);
        return connection(added);
    }

    template <bool Extended, typename F, typename R>
    connection add(F &&function, const R &receiver, group_id group)
    {
        connection made = add<Extended>(detail::make_target(std::forward<F>(function), receiver), group);
        if constexpr (detail::is_observer_pointer<R>())
            receiver->keep(made);
        return made;
    }

    template <typename F, typename Use>
    static std::size_t with_key(const F &function, Use use)
    {
        using kept = std::decay_t<const F &>;
        std::conditional_t<std::is_class_v<kept>, const kept &, const kept> value = function;
        return use(detail::function_key{typeid(kept), std::addressof(value)});
    }

    std::shared_ptr<core_type> m_core;
};

/// The signal for general use.
template <typename... Args>
using signal = signal_base<std::mutex, Args...>;

/// A signal that one thread alone uses.
template <typename... Args>
using signal_st = signal_base<detail::null_lock, Args...>;

/// The same as emitter.connect(given...).
template <typename Lockable, typename... Args, typename... Given>
connection connect(signal_base<Lockable, Args...> &emitter, Given &&...given)
{
    return emitter.connect(std::forward<Given>(given)...);
}

/// Makes a signal emit another one with its arguments. The connection ends with either signal, and moves with both.
template <typename LockA, typename... ArgsA, typename LockB, typename... ArgsB>
connection connect(signal_base<LockA, ArgsA...> &emitter, signal_base<LockB, ArgsB...> &chained, group_id group = 0)
{
    using chained_core = detail::core<LockB, ArgsB...>;
    return emitter.connect(detail::relay<chained_core, ArgsB...>{chained.m_core.get()},
                           std::weak_ptr<chained_core>(chained.m_core), group);
}

} // namespace sigslot
