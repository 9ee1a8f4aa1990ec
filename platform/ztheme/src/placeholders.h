#pragma once

#include <QString>

#include <functional>

namespace ZT {

/// What stands for a key.
using ValueOf = std::function<QString(const QString &key)>;

/// @p sheet with every "<prefix>.theme.color.<key>" and "<prefix>.theme.image.<key>" replaced. One pass over the text:
/// it jumps from one placeholder to the next, however many keys there are.
QString withoutPlaceholders(const QString &sheet, const QString &prefix, const ValueOf &color, const ValueOf &image);

} // namespace ZT
