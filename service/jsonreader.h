#pragma once

#include "serviceerror.h"

#include <QJsonArray>
#include <QJsonObject>

namespace tavro::assistantservice {

/// Reads the members of a JSON object strictly: a member that is missing or of another type is an error, and the first
/// error stays. Reading goes on with empty values, so that a caller checks once at the end.
class JsonReader {
public:
    explicit JsonReader(const QJsonObject &object, const QString &where = {});

    bool boolean(const char *key);
    QString text(const char *key, int maximumLength);
    QJsonArray array(const char *key, int maximumCount);
    int wholeNumber(const char *key, int minimum, int maximum);
    double number(const char *key, double minimum, double maximum);

    void fail(const char *key, const QString &reason);
    const ServiceError &error() const { return m_error; }

private:
    QJsonValue member(const char *key, QJsonValue::Type type, const QString &typeName);

    QJsonObject m_object;
    QString m_where;
    ServiceError m_error;
};

} // namespace tavro::assistantservice
