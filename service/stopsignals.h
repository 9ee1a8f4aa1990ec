#pragma once

namespace tavro::assistantservice {

/// Holds SIGINT and SIGTERM back in the calling thread and in all threads that it starts from now on.
void holdStopSignals();
/// Waits for one of the two. From then on they end the program at once, so that a second one cuts the stopping short.
int waitForStopSignal();

} // namespace tavro::assistantservice
