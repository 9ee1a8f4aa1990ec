#include "grammar/editdistance.h"

#include <algorithm>
#include <bitset>
#include <utility>
#include <vector>

namespace tavro::assistantservice {

int editDistance(const QString &a, const QString &b, int limit)
{
    const auto cells = static_cast<size_t>(b.size()) + 1;
    std::vector<int> memory(3 * cells);
    int *beforeLast = memory.data();
    int *last = beforeLast + cells;
    int *row = last + cells;
    for (int j = 0; j <= b.size(); ++j) {
        row[j] = j;
    }
    for (int i = 1; i <= a.size(); ++i) {
        std::swap(beforeLast, last);
        std::swap(last, row);
        row[0] = i;
        int best = i;
        for (int j = 1; j <= b.size(); ++j) {
            const int change = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({change, last[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
            best = std::min(best, row[j]);
        }
        if (best > limit) {
            return limit + 1;
        }
    }
    return std::min(row[b.size()], limit + 1);
}

quint64 letterSet(const QStringRef &text)
{
    quint64 set = 0;
    for (const QChar c : text) {
        set |= quint64(1) << (c.unicode() % 64);
    }
    return set;
}

int letterDifference(quint64 a, quint64 b)
{
    return static_cast<int>(std::bitset<64>(a ^ b).count());
}

bool sharesLongWord(const QStringList &a, const QStringList &b)
{
    constexpr int shortestLongWord = 4;
    return std::any_of(a.begin(), a.end(),
                       [&b](const QString &word) { return word.size() >= shortestLongWord && b.contains(word); });
}

} // namespace tavro::assistantservice
