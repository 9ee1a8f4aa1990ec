#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace tavro::assistantservice {

/// The arguments of a tool call, out of the forms in which servers give them: a JSON text, also fenced or encoded
/// twice, an object, or either within another "arguments" or "parameters". Empty ones are an empty object. Nothing
/// where they are none of these.
std::optional<QJsonObject> readToolArguments(const QJsonValue &given);

/// The text without a fence of three backticks around it.
QString withoutFence(const QString &text);

} // namespace tavro::assistantservice
