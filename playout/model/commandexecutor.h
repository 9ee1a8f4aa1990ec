#pragma once

#include "aicontroller/agentcmd.h"

#include <QString>

#include <vector>

namespace tavro::playout {

class MediaLibrary;
class PlayoutState;

/// Kinds of command that the service and this host agreed on, besides those that AgentCmd names.
enum HostCommand { StopLayerCommand = 1001, SetVolumeCommand = 1002 };

/// What became of a command, in one line for the operator.
struct CommandResult {
    bool done = false;
    QString text; ///< where it is not done, why not
};

/// Carries the assistant's commands out.
///
/// A command is checked whole before anything changes, so one that is refused changes nothing. Where a command names no
/// program, it means the one on the output it names, or else on the selected output. Without a layer, playing takes the
/// first layer that does not play (or layer 1), and stopping and the volume mean all layers of the program.
class CommandExecutor {
public:
    CommandExecutor(PlayoutState &state, MediaLibrary &library);

    CommandResult execute(const aiassistant::AgentCmd &command);

private:
    struct Target {
        int program = 0;
        std::vector<int> layers; ///< one, or all where the command names none
        bool layerGiven = false;
        int output = 0; ///< 0: not given
        bool programGiven = false;
    };

    QString findTarget(const aiassistant::AgentCmd &command, Target &target) const;
    QString checkMedia(const QString &mediaId) const;
    CommandResult play(const aiassistant::AgentCmd &command, const QString &mediaId);
    CommandResult playGenerated(const aiassistant::AgentCmd &command);
    CommandResult stop(const aiassistant::AgentCmd &command);
    CommandResult setVolume(const aiassistant::AgentCmd &command);
    int freeLayer(int program) const;
    QString place(const Target &target) const;

    PlayoutState &m_state;
    MediaLibrary &m_library;
};

} // namespace tavro::playout
