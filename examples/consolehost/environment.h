#pragma once

namespace tavro::consolehost {

/// Sets what Qt and the logger read from the environment, where the user has not set it. To be called before the
/// application object is made.
void prepareEnvironment();

} // namespace tavro::consolehost
