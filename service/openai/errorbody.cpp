#include "openai/errorbody.h"

#include "openai/plaintext.h"
#include "openai/upstreamjson.h"

#include <QJsonArray>

#include <algorithm>

namespace tavro::assistantservice {

namespace {

constexpr int longestMessage = 300;
// No server needs more to say what is wrong.
constexpr int largestBody = 1024 * 1024;

// A list of what is wrong with the request, as some servers give it.
QString listed(const QJsonArray &details)
{
    QStringList lines;
    for (const QJsonValue &detail : details) {
        lines.append(detail.isString() ? detail.toString() : detail.toObject().value(QLatin1String("msg")).toString());
    }
    lines.removeAll(QString());
    return lines.join(QStringLiteral("; "));
}

QString textOf(const QJsonValue &value)
{
    return value.isArray() ? listed(value.toArray()) : value.toString();
}

QString messageIn(const QJsonObject &root)
{
    const QJsonValue error = root.value(QLatin1String("error"));
    for (const QJsonValue &candidate : {error.toObject().value(QLatin1String("message")), error,
                                        root.value(QLatin1String("message")), root.value(QLatin1String("detail"))}) {
        const QString text = textOf(candidate);
        if (!text.isEmpty()) {
            return text;
        }
    }
    return {};
}

QJsonObject errorObject(const QByteArray &body)
{
    return body.size() <= largestBody ? readUpstreamObject(body) : QJsonObject();
}

bool isEventStream(const UpstreamReply &reply, const QByteArray &beginning)
{
    return reply.contentType.toLower().startsWith("text/event-stream") || beginning.startsWith("data:")
        || beginning.startsWith("event:");
}

} // namespace

BodyKind bodyKind(const UpstreamReply &reply)
{
    const QByteArray beginning = reply.body.left(1024).trimmed();
    if (beginning.isEmpty()) {
        return BodyKind::Empty;
    }
    // A page for a browser says nothing to an operator.
    if (beginning.startsWith('<')) {
        return BodyKind::Page;
    }
    if (isEventStream(reply, beginning)) {
        return BodyKind::EventStream;
    }
    return beginning.startsWith('{') && !readUpstreamObject(reply.body).isEmpty() ? BodyKind::Json : BodyKind::Other;
}

QString upstreamMessage(const QByteArray &body)
{
    const QByteArray beginning = body.left(8 * longestMessage);
    if (beginning.trimmed().startsWith('{')) {
        return plainLine(messageIn(errorObject(body)), longestMessage);
    }
    return beginning.trimmed().startsWith('<') ? QString() : plainLine(QString::fromUtf8(beginning), longestMessage);
}

QString upstreamErrorCode(const QByteArray &body)
{
    const QJsonObject root = errorObject(body);
    const QJsonObject error = root.value(QLatin1String("error")).toObject();
    const QJsonObject &holder = error.isEmpty() ? root : error;
    QStringList parts;
    for (const char *name : {"code", "type", "param"}) {
        parts.append(holder.value(QLatin1String(name)).toString());
    }
    return parts.join(QLatin1Char(' '));
}

bool containsAny(const QString &text, std::initializer_list<const char *> parts)
{
    return std::any_of(parts.begin(), parts.end(),
                       [&](const char *part) { return text.contains(QLatin1String(part), Qt::CaseInsensitive); });
}

} // namespace tavro::assistantservice
