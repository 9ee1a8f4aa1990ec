#pragma once

#include <QFlags>

namespace tavro::runtime {

/// What a machine does in its group; a machine may do several of these at once.
enum class Role {
    ProxyServer = 1, ///< talks to the AI service for the other machines
    ProxyClient = 2, ///< has its operations carried out by the serving machine
    LocalExecutor = 4, ///< carries its own operations out itself
};
Q_DECLARE_FLAGS(Roles, Role)
Q_DECLARE_OPERATORS_FOR_FLAGS(Roles)

} // namespace tavro::runtime
