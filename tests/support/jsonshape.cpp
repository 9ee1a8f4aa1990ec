#include "support/jsonshape.h"

#include <QStringList>

namespace tavro::testsupport {

namespace {

QString typeName(QJsonValue::Type type)
{
    switch (type) {
    case QJsonValue::Bool:
        return QStringLiteral("bool");
    case QJsonValue::Double:
        return QStringLiteral("number");
    case QJsonValue::String:
        return QStringLiteral("string");
    case QJsonValue::Array:
        return QStringLiteral("array");
    case QJsonValue::Object:
        return QStringLiteral("object");
    default:
        return QStringLiteral("null");
    }
}

} // namespace

QString shapeOf(const QJsonObject &object)
{
    QStringList members;
    for (auto member = object.begin(); member != object.end(); ++member)
        members.append(member.key() + QLatin1Char(':') + typeName(member.value().type()));
    members.sort();
    return members.join(QLatin1Char(' '));
}

QByteArray rawValueOf(const QByteArray &json, const QByteArray &key)
{
    const int name = json.indexOf('"' + key + "\":");
    if (name < 0)
        return {};
    const int begin = name + key.size() + 3;
    int end = begin;
    while (end < json.size() && json.at(end) != ',' && json.at(end) != '\n')
        ++end;
    return json.mid(begin, end - begin).trimmed();
}

} // namespace tavro::testsupport
