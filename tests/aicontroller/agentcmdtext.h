#pragma once

#include "aicontroller/agentcmd.h"

#include <QString>
#include <QStringList>

#include <vector>

/// One command on one line: "999 play way=0 program=-1 layer=2 output=-1 media=m7 volume=-1 path=".
inline QString textOf(const tavro::aiassistant::AgentCmd &command)
{
    return QStringLiteral("%1 %2 way=%3 program=%4 layer=%5 output=%6 media=%7 volume=%8 path=%9")
        .arg(command.cmdType)
        .arg(command.bPlay ? QStringLiteral("play") : QStringLiteral("stop"))
        .arg(command.playWay)
        .arg(command.programId)
        .arg(command.layerId)
        .arg(command.outputId)
        .arg(QString::fromStdString(command.mediaId))
        .arg(command.volume)
        .arg(QString::fromStdString(command.localPath));
}

inline QStringList textOf(const std::vector<tavro::aiassistant::AgentCmd> &commands)
{
    QStringList lines;
    for (const auto &command : commands)
        lines.append(textOf(command));
    return lines;
}
