#pragma once

#include "sigslot/detail/tracking.hpp"
#include "sigslot/observer.hpp"

#include <type_traits>
#include <utility>

namespace sigslot::detail {

template <typename F>
constexpr bool is_method_v = std::is_member_function_pointer_v<F>;

template <typename F>
constexpr bool is_function_pointer_v = std::is_pointer_v<F> &&std::is_function_v<std::remove_pointer_t<F>>;

/// The receiver dies with its connections by its own doing, or not at all: nothing to lock for a call.
template <typename Receiver>
constexpr bool
    is_plain_receiver_v = std::is_pointer_v<Receiver> && (is_observer_pointer<Receiver>() || !is_trackable_v<Receiver>);

/// What a slot is called with. It answers which functions can be slots; arguments reach them as lvalues.
template <typename... Parameters>
struct parameters {
    template <typename F>
    static constexpr bool fit()
    {
        using function = std::decay_t<F>;
        if constexpr (std::is_member_pointer_v<function>)
            return false;
        else
            return std::is_constructible_v<function, F> && std::is_invocable_v<function &, Parameters &...>;
    }

    template <typename F, typename R>
    static constexpr bool fit()
    {
        using function = std::decay_t<F>;
        using receiver = std::decay_t<R>;
        if constexpr (is_plain_receiver_v<receiver>)
            return is_method_v<function> && std::is_invocable_v<function, receiver, Parameters &...>;
        else if constexpr (!is_trackable_v<receiver>)
            return false;
        else if constexpr (is_method_v<function>)
            return std::is_invocable_v<function, locked_type<receiver>, Parameters &...>;
        else
            return fit<F>();
    }
};

} // namespace sigslot::detail
