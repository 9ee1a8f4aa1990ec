#pragma once

#include <QStringList>

namespace tavro::hostkit {

/// Sets what Qt and the logger read from the environment, where the user has not set it. To be called before the
/// application object is made.
void prepareEnvironment();

/// Whether there is a screen to show a window on, or the user chose Qt's platform.
bool canShowWindows();

/// The words of a command line as UTF-8, in every locale.
QStringList toStrings(int count, char *texts[]);

} // namespace tavro::hostkit
