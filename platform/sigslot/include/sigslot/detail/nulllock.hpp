#pragma once

namespace sigslot::detail {

/// A lock that locks nothing, for objects that one thread alone uses.
struct null_lock {
    void lock() noexcept { }
    bool try_lock() noexcept { return true; }
    void unlock() noexcept { }
};

} // namespace sigslot::detail
