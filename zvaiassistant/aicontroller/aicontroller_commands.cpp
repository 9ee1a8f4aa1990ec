#include "aicontroller/agentcmd_p.h"
#include "aicontroller/aicontroller_p.h"
#include "common/hostlog.h"

namespace tavro::aiassistant {

namespace {

constexpr int mostCommands = 1000;

} // namespace

void AiController::Private::analyseAgentCmds(const QJsonArray &agentCmds)
{
    if (agentCmds.size() > mostCommands) {
        agentCmdList.clear();
        ZVAI_HOST_LOG(spdlog::level::err, "an answer brought {} commands; of more than {} none is carried out",
                      agentCmds.size(), mostCommands);
        return;
    }
    AgentCommands commands = readAgentCommands(agentCmds);
    agentCmdList = std::move(commands.list);
    if (commands.needPicture && !strLastPictureUrl.isEmpty()) {
        bPlayAfterDownload = true;
        slotDownloadPicture(strLastPictureUrl);
    } else {
        announceCommands();
    }
}

void AiController::Private::completeCommands(const QString &path)
{
    for (AgentCmd &command : agentCmdList) {
        if (command.cmdType == AgentCmd::GeneratedPicture)
            command.localPath = path.toStdString();
    }
    announceCommands();
}

// A copy, because a receiver may destroy the controller while others still read the list.
void AiController::Private::announceCommands()
{
    std::vector<AgentCmd> commands = agentCmdList;
    controller->sigAgentCmds(commands);
}

} // namespace tavro::aiassistant
