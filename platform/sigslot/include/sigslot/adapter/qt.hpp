#pragma once

#include <QtCore/qobject.h>
#include <QtCore/qpointer.h>
#include <QtCore/qsharedpointer.h>

#include <type_traits>

/// Makes QObject pointers, QSharedPointer and QWeakPointer trackable receivers.
///
/// To be included before the first connection to such a receiver. A QObject cannot be kept alive: its slot is called on
/// the emitting thread, whatever thread the object lives in, and the object counts as gone only when ~QObject begins,
/// after its derived parts were destroyed. So emissions are safe on the thread that destroys the object, outside of its
/// destructors; a receiver of emissions on other threads must be sure that they have ended.
namespace sigslot::detail {

template <typename T>
struct qobject_weak {
    T *lock() const { return pointer.data(); }
    bool expired() const { return pointer.isNull(); }

    QPointer<T> pointer;
};

template <typename T>
struct qshared_weak {
    QSharedPointer<T> lock() const { return pointer.toStrongRef(); }
    bool expired() const { return pointer.isNull(); }

    QWeakPointer<T> pointer;
};

} // namespace sigslot::detail

// In Qt's namespace, where the search by argument type finds them.
QT_BEGIN_NAMESPACE

template <typename T, std::enable_if_t<std::is_convertible_v<T *, const QObject *>, int> = 0>
sigslot::detail::qobject_weak<T> to_weak(T *tracked)
{
    return {tracked};
}

template <typename T>
sigslot::detail::qshared_weak<T> to_weak(const QSharedPointer<T> &tracked)
{
    return {tracked};
}

template <typename T>
sigslot::detail::qshared_weak<T> to_weak(const QWeakPointer<T> &tracked)
{
    return {tracked};
}

QT_END_NAMESPACE
