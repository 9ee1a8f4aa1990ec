#pragma once

#include <QByteArray>

namespace tavro::assistantservice {

/// Whether some object of a JSON text names a member again whose earlier value is a list or an object. Qt's parser
/// never frees that earlier value, so that such texts would fill the memory. Of a text that is not JSON the answer does
/// not count.
bool repeatsContainerKey(const QByteArray &json);

} // namespace tavro::assistantservice
