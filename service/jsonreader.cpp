#include "jsonreader.h"

#include <cmath>

namespace tavro::assistantservice {

JsonReader::JsonReader(const QJsonObject &object, const QString &where)
    : m_object(object)
    , m_where(where)
{ }

void JsonReader::fail(const char *key, const QString &reason)
{
    if (!m_error) {
        m_error = {ErrorCode::BadRequest, QStringLiteral("\"%1%2\" %3.").arg(m_where, QLatin1String(key), reason)};
    }
}

QJsonValue JsonReader::member(const char *key, QJsonValue::Type type, const QString &typeName)
{
    const QJsonValue value = m_object.value(QLatin1String(key));
    if (value.isUndefined()) {
        fail(key, QStringLiteral("is missing"));
    } else if (value.type() != type) {
        fail(key, QStringLiteral("must be %1").arg(typeName));
    }
    return value;
}

bool JsonReader::boolean(const char *key)
{
    return member(key, QJsonValue::Bool, QStringLiteral("true or false")).toBool();
}

QString JsonReader::text(const char *key, int maximumLength)
{
    const QString text = member(key, QJsonValue::String, QStringLiteral("a text")).toString();
    if (text.size() > maximumLength) {
        fail(key, QStringLiteral("is longer than %1 characters").arg(maximumLength));
    }
    return text;
}

QJsonArray JsonReader::array(const char *key, int maximumCount)
{
    QJsonArray array = member(key, QJsonValue::Array, QStringLiteral("a list")).toArray();
    if (array.size() > maximumCount) {
        fail(key, QStringLiteral("holds more than %1 entries").arg(maximumCount));
        return {};
    }
    return array;
}

int JsonReader::wholeNumber(const char *key, int minimum, int maximum)
{
    const double value = member(key, QJsonValue::Double, QStringLiteral("a whole number")).toDouble(minimum);
    if (value < minimum || value > maximum) {
        fail(key, QStringLiteral("must be from %1 to %2").arg(minimum).arg(maximum));
        return minimum;
    }
    if (value != std::floor(value)) {
        fail(key, QStringLiteral("must be a whole number"));
    }
    return static_cast<int>(value);
}

double JsonReader::number(const char *key, double minimum, double maximum)
{
    const double value = member(key, QJsonValue::Double, QStringLiteral("a number")).toDouble(minimum);
    if (value < minimum || value > maximum) {
        fail(key, QStringLiteral("must be from %1 to %2").arg(minimum).arg(maximum));
        return minimum;
    }
    return value;
}

} // namespace tavro::assistantservice
