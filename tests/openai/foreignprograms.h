#pragma once

#include "foreignserver.h"

namespace upstream {

// Two servers by different authors. Each says "Paris." where it is asked for the capital of France, plays item m1 on
// layer 2 where it is told to play the harbour, and refuses the key where it is asked for what is forbidden.

ForeignProgram aimock();
ForeignProgram mockLlm();

} // namespace upstream
