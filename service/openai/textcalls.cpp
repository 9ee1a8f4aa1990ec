#include "openai/textcalls.h"

#include "openai/toolarguments.h"
#include "openai/upstreamjson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

namespace tavro::assistantservice {

namespace {

// What chat templates put around a call. In plain text nobody writes these.
const QRegularExpression &marks()
{
    static const QRegularExpression expression(QStringLiteral(
        "</?tool_calls?>|<function=\\w+>|</?function_calls?>|\\[TOOL_CALLS\\]|\\[TOOL_REQUEST\\]|<\\|python_tag\\|>"
        "|<\\|tool_calls?\\|>|<\\|tool_calls?_section_begin\\|>|<｜tool▁calls?▁begin｜>|\\Afunctools\\s*\\["
        "|to=functions\\.\\w+"));
    return expression;
}

// A call of one of our tools as a line of a program, or as JSON that need not be whole.
const QRegularExpression &ownCalls()
{
    static const QRegularExpression expression(
        QStringLiteral(
            "\\A\\[?\\s*(?:TOOL\\s*)\\(.*\\)\\s*\\]?;?\\z|[\\[{]\\s*\"(?:name|function|tool)\"\\s*:\\s*\"TOOL\"")
            .replace(QLatin1String("TOOL"),
                     QLatin1String("(?:play_media|play_generated_picture|stop_layer|set_volume)")),
        QRegularExpression::DotMatchesEverythingOption);
    return expression;
}

bool isCall(const QJsonObject &object)
{
    const QJsonObject function = object.value(QLatin1String("function")).toObject();
    const QJsonObject &call = function.isEmpty() ? object : function;
    return call.value(QLatin1String("name")).isString()
        && (call.contains(QLatin1String("arguments")) || call.contains(QLatin1String("parameters")));
}

bool isNothingButCalls(const QString &text)
{
    const QByteArray json = withoutFence(text).toUtf8();
    if (!isModestJson(json)) {
        return false;
    }
    const QJsonDocument document = QJsonDocument::fromJson(json);
    const QJsonArray calls = document.object().value(QLatin1String("tool_calls")).toArray();
    const QJsonValue first = document.isArray() ? document.array().at(0) : calls.at(0);
    return isCall(document.isObject() && calls.isEmpty() ? document.object() : first.toObject());
}

} // namespace

bool holdsTextCall(const QString &text)
{
    const QString bare = text.trimmed();
    return marks().match(bare).hasMatch() || ownCalls().match(bare).hasMatch() || isNothingButCalls(bare);
}

} // namespace tavro::assistantservice
