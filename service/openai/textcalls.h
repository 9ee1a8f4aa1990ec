#pragma once

#include <QString>

namespace tavro::assistantservice {

/// Whether a model has written a tool call into its text, in place of calling: "<tool_call>{...}</tool_call>",
/// "[TOOL_CALLS][...]", nothing but the call's JSON, and the like. Such a text is neither shown nor carried out.
bool holdsTextCall(const QString &text);

} // namespace tavro::assistantservice
