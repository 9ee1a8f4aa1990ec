#pragma once

namespace tavro::consolehost {

/// How the program ends. A signal ends it with 128 and the signal's number, as shells do.
enum ExitStatus {
    Answered = 0,
    Failed = 2, ///< also for wrong usage
    TimedOut = 3,
};

} // namespace tavro::consolehost
