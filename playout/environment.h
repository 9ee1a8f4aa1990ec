#pragma once

namespace tavro::playout {

/// Sets what Qt and the logger read from the environment, where the user has not set it. To be called before the
/// application object is made.
void prepareEnvironment();

/// Whether there is a screen to show a window on, or the user chose Qt's platform.
bool canShowWindows();

} // namespace tavro::playout
