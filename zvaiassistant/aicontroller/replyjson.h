#pragma once

class QByteArray;
class QJsonDocument;

namespace tavro::aiassistant {

/// The document in @p body, null where it is none.
///
/// Null too where it is not safe to ask Qt's parser: where an object has a key again whose first value is a list or an
/// object, which the parser then never frees, and where there are more than about 100,000 values, which take many times
/// the memory of their text.
QJsonDocument readJson(const QByteArray &body);

} // namespace tavro::aiassistant
