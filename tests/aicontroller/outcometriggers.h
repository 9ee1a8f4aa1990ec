#pragma once

#include "controllerfixture.h"

#include <functional>

/// The ways in which a request ends, or an answer goes on: what to script and do, and which signal tells of it.
enum class Ending {
    TextFinished,
    PictureFinished,
    PictureUnreachable,
    GenerationFailed,
    GenerationRefused,
    PollFailed,
    PollRefused,
    TimedOut,
    AgentCommands,
    DownloadFinished,
};

/// Adds the column "ending" (int) with a row for each.
void addEndings();

/// Runs @p action inside the first emission of the signal that tells of @p ending.
void onEnding(AiController &controller, Ending ending, const std::function<void()> &action);

/// Scripts the service of @p f and drives @p controller, which uses it, to the point where the signal is due or already
/// sent. False where it did not get there.
bool bringAbout(Ending ending, ControllerFixture &f, AiController &controller);
