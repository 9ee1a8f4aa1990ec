#include "http/byterange.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace tavro::assistantservice {

namespace {

constexpr char unit[] = "bytes=";
constexpr int unitLength = sizeof unit - 1;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Digits alone. A number that does not fit lies behind the end of every file, as the largest one does.
std::optional<qint64> readPosition(const QByteArray &text)
{
    if (text.isEmpty() || !std::all_of(text.begin(), text.end(), isDigit)) {
        return std::nullopt;
    }
    bool fits = false;
    const qint64 position = text.toLongLong(&fits);
    return fits ? position : std::numeric_limits<qint64>::max();
}

ByteRange part(qint64 begin, qint64 end)
{
    return {ByteRange::Kind::Part, begin, end - begin};
}

ByteRange lastBytes(qint64 count, qint64 size)
{
    return count == 0 || size == 0 ? ByteRange{ByteRange::Kind::Unsatisfiable}
                                   : part(size - std::min(count, size), size);
}

ByteRange between(qint64 first, qint64 last, qint64 size)
{
    if (last < first) {
        return {};
    }
    return first >= size ? ByteRange{ByteRange::Kind::Unsatisfiable} : part(first, std::min(last, size - 1) + 1);
}

} // namespace

ByteRange readByteRange(const QByteArray &header, qint64 size)
{
    const QByteArray value = header.trimmed();
    const int dash = value.indexOf('-');
    if (qstrnicmp(value.constData(), unit, unitLength) != 0 || dash < 0) {
        return {};
    }
    const QByteArray firstText = value.mid(unitLength, dash - unitLength).trimmed();
    const QByteArray lastText = value.mid(dash + 1).trimmed();
    const std::optional<qint64> first = readPosition(firstText);
    const std::optional<qint64> last = readPosition(lastText);
    if (firstText.isEmpty() && last) {
        return lastBytes(*last, size);
    }
    if (!first || (!last && !lastText.isEmpty())) {
        return {};
    }
    return between(*first, last.value_or(std::numeric_limits<qint64>::max()), size);
}

} // namespace tavro::assistantservice
