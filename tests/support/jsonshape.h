#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

namespace tavro::testsupport {

/// The exact keys of @p object with the JSON type of each, in the order of the keys: "content:string type:bool".
QString shapeOf(const QJsonObject &object);

/// The text between the colon behind the first @p key in the raw @p json and the next comma or line end: "3840" and
/// "3840.0" are the same number once parsed, but not here.
QByteArray rawValueOf(const QByteArray &json, const QByteArray &key);

} // namespace tavro::testsupport
