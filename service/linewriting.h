#pragma once

#include <cstddef>

namespace tavro::assistantservice {

/// Writes a line of at most PIPE_BUF bytes (of a longer one the beginning), whole or not at all, and never waits for
/// whoever reads there. False where it was not written.
bool writeWithoutWaiting(int descriptor, const char *line, std::size_t size);

} // namespace tavro::assistantservice
