#pragma once

#include "formfiller.h"

namespace tavro::assistantservice {

/// Reads a JSON text (UTF-8) from its beginning to its end and hands its parts to `filler`. The error is one of the
/// text as a whole: not JSON, no object, a member twice.
ServiceError readJsonText(const QByteArray &json, FormFiller &filler);

} // namespace tavro::assistantservice
