#include "openai/toolarguments.h"

#include "openai/upstreamjson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSet>

namespace tavro::assistantservice {

namespace {

constexpr int mostEncodings = 3;

// Any JSON value, where Qt's parser reads lists and objects only.
QJsonValue valueIn(const QString &text)
{
    const QByteArray list = '[' + text.toUtf8() + ']';
    const QJsonArray values = isModestJson(list) ? QJsonDocument::fromJson(list).array() : QJsonArray();
    return values.size() == 1 ? values.first() : QJsonValue(QJsonValue::Undefined);
}

QJsonValue decoded(QJsonValue value)
{
    for (int i = 0; i < mostEncodings && value.isString(); ++i) {
        const QString text = withoutFence(value.toString());
        value = text.isEmpty() ? QJsonValue(QJsonValue::Null) : valueIn(text);
    }
    return value;
}

// Whether there is nothing in it but the call once more.
bool isWrapper(const QJsonObject &object)
{
    static const QSet<QString> names{QStringLiteral("arguments"), QStringLiteral("parameters"), QStringLiteral("name"),
                                     QStringLiteral("type")};
    const QStringList keys = object.keys();
    return names.contains(QSet<QString>(keys.begin(), keys.end()));
}

QJsonValue innerOf(const QJsonObject &object)
{
    const QJsonValue arguments = object.value(QLatin1String("arguments"));
    return arguments.isUndefined() ? object.value(QLatin1String("parameters")) : arguments;
}

} // namespace

std::optional<QJsonObject> readToolArguments(const QJsonValue &given)
{
    QJsonValue value = decoded(given.isUndefined() ? QJsonValue(QJsonValue::Null) : given);
    if (value.isObject() && isWrapper(value.toObject()) && !innerOf(value.toObject()).isUndefined()) {
        value = decoded(innerOf(value.toObject()));
    }
    if (value.isNull()) {
        return QJsonObject();
    }
    return value.isObject() ? std::optional(value.toObject()) : std::nullopt;
}

QString withoutFence(const QString &text)
{
    static const QRegularExpression fence(QStringLiteral("\\A```[a-zA-Z_]*\\s*(.*?)\\s*```\\z"),
                                          QRegularExpression::DotMatchesEverythingOption);
    const QString bare = text.trimmed();
    const QRegularExpressionMatch match = fence.match(bare);
    return match.hasMatch() ? match.captured(1) : bare;
}

} // namespace tavro::assistantservice
