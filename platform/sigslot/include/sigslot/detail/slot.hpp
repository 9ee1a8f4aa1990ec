#pragma once

#include "sigslot/connection.hpp"
#include "sigslot/detail/slotstate.hpp"

#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace sigslot::detail {

/// A function as disconnect() asks for it. Pointers are compared by value, function objects by their type.
struct function_key {
    const std::type_info &type;
    const void *value;
};

template <typename Function>
bool is_same_function(const Function &own, const function_key &key)
{
    if (key.type != typeid(Function))
        return false;
    if constexpr (std::is_class_v<Function>)
        return true;
    else
        return own == *static_cast<const Function *>(key.value);
}

/// A slot as the signal sees it.
template <typename... Args>
class slot : public slot_state {
public:
    using slot_state::slot_state;

    template <typename... Given>
    void run(Given &...args)
    {
        if (may_run())
            call(args...);
    }

    virtual bool calls(const function_key &key) const = 0;
    virtual const void *object() const noexcept = 0;

private:
    virtual void call(Args... args) = 0;
};

/// A slot that calls a target; an extended one hands it its own connection first.
template <bool Extended, typename Target, typename... Args>
class target_slot final : public slot<Args...> {
public:
    target_slot(std::weak_ptr<slot_owner> owner, group_id group, Target target)
        : slot<Args...>(std::move(owner), group)
        , m_target(std::move(target))
    { }

    bool connected() const override { return slot_state::connected() && m_target.alive(); }
    bool calls(const function_key &key) const override { return is_same_function(m_target.callee(), key); }
    const void *object() const noexcept override { return m_target.object(); }

private:
    void call(Args... args) override
    {
        if (!reach(args...))
            this->disconnect();
    }

    template <typename... Given>
    bool reach(Given &...args)
    {
        if constexpr (Extended) {
            connection self(this->weak_from_this());
            return m_target.call(self, args...);
        } else {
            return m_target.call(args...);
        }
    }

    Target m_target;
};

} // namespace sigslot::detail
