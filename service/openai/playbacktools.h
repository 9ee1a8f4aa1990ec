#pragma once

#include "openai/mediaselection.h"

#include <QJsonArray>

namespace tavro::assistantservice {

/// The tools that a model is offered. The ids of the items that it is shown are listed in them, so that servers which
/// constrain what a model writes let no other pass.
QJsonArray playbackTools(const QVector<ShownItem> &shownMedia);

} // namespace tavro::assistantservice
