#pragma once

#include <QStringList>

namespace tavro::assistantservice {

/// How many letters have to be changed, added, dropped or swapped with their neighbour to turn one text into the other;
/// `limit` + 1 where it is more than `limit`.
int editDistance(const QString &a, const QString &b, int limit);

/// A rough set of the letters of a text, and how many letters two such sets differ by: a cheap lower bound of twice the
/// edit distance.
quint64 letterSet(const QStringRef &text);
int letterDifference(quint64 a, quint64 b);

/// Whether the two have a word in common that is long enough to mean something.
bool sharesLongWord(const QStringList &a, const QStringList &b);

} // namespace tavro::assistantservice
