#pragma once

#include "grammar/playback.h"

#include <QJsonArray>

namespace tavro::assistantservice {

/// Kinds of command, as the panel hands them to the host.
enum class CommandType { Play = 0, StopLayer = 1001, SetVolume = 1002 };

/// More than a hundred commands: no user means so many at once.
bool isTooMuch(const QVector<Intent> &intents);

/// The commands that carry out the intents. What the user did not say is left out of them.
QJsonArray agentCommands(const QVector<Intent> &intents, const MediaNames &names);

} // namespace tavro::assistantservice
