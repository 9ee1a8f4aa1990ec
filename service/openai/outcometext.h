#pragma once

#include "openai/upstreamreply.h"

#include <QString>

namespace tavro::assistantservice {

/// Why an exchange brought no answer, for the operator, and what to do. `server` as it is called in the middle of a
/// sentence: "model's server http://127.0.0.1:11434/v1".
QString outcomeText(UpstreamReply::Outcome outcome, const QString &server);

} // namespace tavro::assistantservice
