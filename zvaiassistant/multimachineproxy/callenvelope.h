#pragma once

#include "aicontroller/chatrecords.h"

#include <msgpack/sbuffer.hpp>

#include <cstddef>
#include <string>
#include <vector>

class QString;

namespace tavro::aiassistant::envelope {

// The payload of a message between machines: one MessagePack object, the operation's argument. A message without an
// argument has no payload at all.
//
// T is bool, QString or std::string (both travel as UTF-8), std::vector<std::string>, or one of the four records. All
// of it may be used on any thread.

// What a received payload may hold at most.
inline constexpr std::size_t maxDepth = 16; ///< arrays within arrays
inline constexpr std::size_t maxElements = 1024; ///< of one array
inline constexpr std::size_t maxTextBytes = 16 * 1024 * 1024; ///< of one text

/// Throws msgpack::container_size_overflow for a text of 4 GiB or more, and std::bad_alloc.
template <typename T>
msgpack::sbuffer pack(const T &value);

/// Reads what another machine sent, which may be anything. Bytes that are no MessagePack object, that break off or that
/// go beyond the limits above throw a msgpack::unpack_error; an object that is no T throws std::invalid_argument. The
/// memory that is taken meanwhile grows with @p size, not with what the bytes announce.
template <typename T>
T unpack(const char *data, unsigned int size);

} // namespace tavro::aiassistant::envelope
