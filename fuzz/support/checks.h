#pragma once

/// Ends the program, as a crash does, where @p holds is false: what a fuzz target promises beyond "nothing is read or
/// written out of bounds". Not an assertion: it counts in every build.
inline void demand(bool holds)
{
    if (!holds)
        __builtin_trap();
}
