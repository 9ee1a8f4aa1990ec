#pragma once

#include "script/scriptstep.h"

namespace tavro::playout {

/// Reads a script, one step a line. Empty lines and lines that begin with # are left out. All wrong lines are told.
Script parseScript(const QString &text);

} // namespace tavro::playout
