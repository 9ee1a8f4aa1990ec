#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace sigslot::detail {

/// What makes an object trackable: a function to_weak(object), found here or beside the object's type. It returns an
/// object with expired() and lock(); lock() returns a raw pointer or a smart pointer with get(), which is null when the
/// receiver is gone and keeps it alive otherwise (as far as the type can).
template <typename T>
std::weak_ptr<T> to_weak(const std::weak_ptr<T> &tracked)
{
    return tracked;
}

template <typename T>
std::weak_ptr<T> to_weak(const std::shared_ptr<T> &tracked)
{
    return tracked;
}

template <typename T>
auto make_weak(const T &tracked) -> decltype(to_weak(tracked))
{
    return to_weak(tracked);
}

template <typename T, typename = void>
struct is_trackable : std::false_type { };

template <typename T>
struct is_trackable<T,
                    std::void_t<decltype(make_weak(std::declval<const T &>()).lock()),
                                decltype(make_weak(std::declval<const T &>()).expired())>> : std::true_type { };

template <typename T>
constexpr bool is_trackable_v = is_trackable<T>::value;

template <typename T>
using weak_type = decltype(make_weak(std::declval<const T &>()));

template <typename T>
using locked_type = decltype(std::declval<weak_type<T>>().lock());

template <typename Pointer>
const void *address_of(const Pointer &pointer)
{
    if constexpr (std::is_pointer_v<Pointer>)
        return pointer; // cppcheck-suppress CastIntegerToAddressAtReturn ; it was just asked
    else
        return pointer.get();
}

/// The receiver's address, by which its slots are found. Null if the receiver is gone.
template <typename Receiver>
const void *receiver_address(const Receiver &receiver)
{
    if constexpr (std::is_pointer_v<Receiver>)
        return address_of(receiver);
    else
        return address_of(make_weak(receiver).lock());
}

} // namespace sigslot::detail
