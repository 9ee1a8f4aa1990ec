#pragma once

#include <QString>

namespace tavro::playout {

/// Whether @p left stands before @p right as a person sorts names: without regard to case, and "clip 2" before
/// "clip 10". The same in every locale.
bool naturallyBefore(const QString &left, const QString &right);

} // namespace tavro::playout
