#pragma once

#include "sigslot/detail/parameters.hpp"
#include "sigslot/detail/tracking.hpp"

#include <functional>
#include <utility>

namespace sigslot::detail {

/// The three kinds of what a slot calls. call() is false if the receiver is gone.

/// A function or function object.
template <typename Function>
class free_target {
public:
    explicit free_target(Function function)
        : m_function(std::move(function))
    { }

    template <typename... Args>
    bool call(Args &...args)
    {
        m_function(args...);
        return true;
    }

    bool alive() const noexcept { return true; }
    const Function &callee() const noexcept { return m_function; }
    const void *object() const noexcept { return nullptr; }

private:
    Function m_function;
};

/// A member function of an object that nobody watches.
template <typename Method, typename Pointer>
class bound_target {
public:
    bound_target(Method method, Pointer object)
        : m_method(method)
        , m_object(object)
    { }

    template <typename... Args>
    bool call(Args &...args)
    {
        std::invoke(m_method, m_object, args...);
        return true;
    }

    bool alive() const noexcept { return true; }
    const Method &callee() const noexcept { return m_method; }
    const void *object() const noexcept { return m_object; }

private:
    Method m_method;
    Pointer m_object;
};

/// A member function of a tracked object, or a function that is called only while that object lives.
template <typename Function, typename Weak>
class tracked_target {
public:
    tracked_target(Function function, Weak tracked, const void *object)
        : m_function(std::move(function))
        , m_tracked(std::move(tracked))
        , m_object(object)
    { }

    template <typename... Args>
    bool call(Args &...args)
    {
        const auto locked = m_tracked.lock();
        if (!locked)
            return false;
        if constexpr (is_method_v<Function>)
            std::invoke(m_function, locked, args...);
        else
            m_function(args...);
        return true;
    }

    bool alive() const { return !m_tracked.expired(); }
    const Function &callee() const noexcept { return m_function; }
    const void *object() const noexcept { return m_object; }

private:
    Function m_function;
    Weak m_tracked;
    const void *m_object;
};

template <typename F>
auto make_target(F &&function)
{
    return free_target<std::decay_t<F>>(std::forward<F>(function));
}

template <typename F, typename Receiver>
auto make_target(F &&function, const Receiver &receiver)
{
    using function_type = std::decay_t<F>;
    if constexpr (is_plain_receiver_v<Receiver>)
        return bound_target<function_type, Receiver>(function, receiver);
    else
        return tracked_target<function_type, weak_type<Receiver>>(std::forward<F>(function), make_weak(receiver),
                                                                  receiver_address(receiver));
}

} // namespace sigslot::detail
