#pragma once

#include "aicontroller/agentcmd.h"

#include <QString>

namespace tavro::consolehost {

/// An agent command in one line, with the values that it was given.
QString agentCommandText(const aiassistant::AgentCmd &command);

} // namespace tavro::consolehost
