#pragma once

#include <QByteArray>

namespace tavro::assistantservice {

/// What part of a file a "Range" header asks for.
struct ByteRange {
    enum class Kind {
        Whole, ///< no range, or one that a server may pass over: several ranges, another unit, a malformed one
        Part,
        Unsatisfiable, ///< begins behind the end of the file
    };

    Kind kind = Kind::Whole;
    /// Where the part begins and how long it is: always within the file, and never empty. Counts for a part alone.
    qint64 begin = 0;
    qint64 length = 0;
};

/// Reads the value of a "Range" header for a file of @p size bytes; an empty one asks for the whole file.
ByteRange readByteRange(const QByteArray &header, qint64 size);

} // namespace tavro::assistantservice
