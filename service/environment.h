#pragma once

#include "openai/upstreamoptions.h"

#include <QByteArray>
#include <QString>

namespace tavro::assistantservice {

/// What the process finds around it.
struct Environment {
    /// Counts where the command line names no token.
    QByteArray token;
    UpstreamKeys upstreamKeys;
    /// This machine's name; empty where it has none.
    QByteArray machine;
    /// Where the service may keep what outlives it; empty where there is no such place.
    QString stateFolder;
};

Environment readEnvironment();

} // namespace tavro::assistantservice
