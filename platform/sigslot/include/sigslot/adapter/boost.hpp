#pragma once

#include <boost/smart_ptr/shared_ptr.hpp>
#include <boost/smart_ptr/weak_ptr.hpp>

/// Makes boost::shared_ptr and boost::weak_ptr trackable receivers.
namespace boost {

template <typename T>
weak_ptr<T> to_weak(const weak_ptr<T> &tracked)
{
    return tracked;
}

template <typename T>
weak_ptr<T> to_weak(const shared_ptr<T> &tracked)
{
    return tracked;
}

} // namespace boost
