#pragma once

#include <QByteArray>

namespace tavro::assistantservice {

/// Compares in a time that does not depend on where the two differ.
bool equalSecrets(const QByteArray &given, const QByteArray &expected);

} // namespace tavro::assistantservice
