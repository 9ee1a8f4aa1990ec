#pragma once

#include "openai/mediaselection.h"

namespace tavro::assistantservice {

/// The media library as data for a model, in one block that tells so. No name can end the block or leave it.
QString libraryBlock(const QVector<ShownItem> &items, int librarySize);

} // namespace tavro::assistantservice
