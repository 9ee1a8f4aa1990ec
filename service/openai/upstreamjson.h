#pragma once

#include <QByteArray>
#include <QJsonObject>

namespace tavro::assistantservice {

/// A server's JSON object; empty where it is none, or nests deeper than 64, names a list or object twice in one object,
/// or is made of so many small values that it would take more than twenty times its bytes.
QJsonObject readUpstreamObject(const QByteArray &json);

/// The same of the text within a JSON text.
QJsonObject readUpstreamObject(const QString &json);

/// The limits above, for texts that are not parsed yet.
bool isModestJson(const QByteArray &json);

} // namespace tavro::assistantservice
