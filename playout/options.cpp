#include "options.h"

#include <array>
#include <utility>

namespace tavro::playout {

namespace {

constexpr std::array roles{
    std::pair{Role::All, "all"},
    std::pair{Role::Local, "local"},
    std::pair{Role::Server, "server"},
    std::pair{Role::Client, "client"},
};

} // namespace

QString nameOf(Role role)
{
    for (const auto &[each, name] : roles) {
        if (each == role)
            return QLatin1String(name);
    }
    return {};
}

std::optional<Role> roleNamed(const QString &name)
{
    for (const auto &[role, each] : roles) {
        if (name == QLatin1String(each))
            return role;
    }
    return std::nullopt;
}

} // namespace tavro::playout
