#include "aicontroller/agentcmd_p.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

namespace tavro::aiassistant {

namespace {

void read(const QJsonValue &value, bool &field)
{
    field = value.toBool();
}

void read(const QJsonValue &value, std::int32_t &field)
{
    field = value.toInt();
}

void read(const QJsonValue &value, double &field)
{
    field = value.toDouble();
}

void read(const QJsonValue &value, std::string &field)
{
    field = value.toString().toStdString();
}

// A member of the wrong type counts as given: it reads as Qt converts it, not as the field's own default.
template <typename Field>
void readIfPresent(const QJsonObject &object, QLatin1String key, Field &field)
{
    const auto member = object.constFind(key);
    if (member != object.constEnd())
        read(*member, field);
}

void readParams(const QJsonObject &params, AgentCmd &command)
{
    readIfPresent(params, QLatin1String("bPlay"), command.bPlay);
    readIfPresent(params, QLatin1String("playWay"), command.playWay);
    readIfPresent(params, QLatin1String("programId"), command.programId);
    readIfPresent(params, QLatin1String("layerId"), command.layerId);
    readIfPresent(params, QLatin1String("outputId"), command.outputId);
    readIfPresent(params, QLatin1String("mediaId"), command.mediaId);
    readIfPresent(params, QLatin1String("volume"), command.volume);
}

AgentCmd readCommand(const QJsonObject &object)
{
    AgentCmd command;
    readParams(object.value(QLatin1String("params")).toObject(), command);
    readIfPresent(object, QLatin1String("cmdType"), command.cmdType);
    if (command.cmdType == AgentCmd::GeneratedPicture && !command.mediaId.empty())
        command.cmdType = AgentCmd::LibraryMedia;
    return command;
}

} // namespace

AgentCommands readAgentCommands(const QJsonArray &array)
{
    AgentCommands commands;
    for (const QJsonValue &value : array) {
        if (!value.isObject())
            continue;
        commands.list.push_back(readCommand(value.toObject()));
        commands.needPicture |= commands.list.back().cmdType == AgentCmd::GeneratedPicture;
    }
    return commands;
}

} // namespace tavro::aiassistant
