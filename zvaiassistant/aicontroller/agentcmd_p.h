#pragma once

#include "aicontroller/agentcmd.h"

#include <vector>

class QJsonArray;

namespace tavro::aiassistant {

/// The commands out of one answer.
struct AgentCommands {
    std::vector<AgentCmd> list;
    bool needPicture = false; ///< one of them acts on the generated picture
};

/// Reads the "agentCmds" of an answer. Elements that are no objects are left out.
AgentCommands readAgentCommands(const QJsonArray &array);

} // namespace tavro::aiassistant
