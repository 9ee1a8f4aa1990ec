#include "openai/upstreamerror.h"

#include "openai/outcometext.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace tavro::assistantservice {

namespace {

constexpr int longestMessage = 300;

QString oneLine(const QString &text)
{
    const QString line = text.simplified();
    return line.size() <= longestMessage ? line : line.left(longestMessage - 1) + QChar(0x2026);
}

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

// A page for a browser says nothing to an operator.
bool isPage(const QByteArray &body)
{
    return body.trimmed().startsWith('<');
}

QString errorCode(const QByteArray &body)
{
    const QJsonObject root = QJsonDocument::fromJson(body).object();
    const QJsonObject error = root.value(QLatin1String("error")).toObject();
    const QJsonObject &holder = error.isEmpty() ? root : error;
    return holder.value(QLatin1String("code")).toString() + QLatin1Char(' ')
        + holder.value(QLatin1String("type")).toString();
}

bool containsAny(const QString &text, std::initializer_list<const char *> parts)
{
    return std::any_of(parts.begin(), parts.end(),
                       [&](const char *part) { return text.contains(QLatin1String(part), Qt::CaseInsensitive); });
}

QString withReason(const QString &sentence, const QByteArray &body)
{
    const QString reason = upstreamMessage(body);
    return reason.isEmpty() ? sentence : sentence + QStringLiteral(" It says: ") + reason;
}

QString refused(const UpstreamReply &reply, const QString &server, const QString &model)
{
    if (reply.status >= 300 && reply.status < 400) {
        return QStringLiteral("The model's server %1 sends on to another address; please set that one.").arg(server);
    }
    if (isQuotaSpent(reply)) {
        return QStringLiteral("The account at the model's server %1 has no credit left.").arg(server);
    }
    switch (reply.status) {
    case 401:
    case 403:
        return QStringLiteral("The model's server %1 does not accept the key.").arg(server);
    case 404:
        return model.isEmpty() ? QStringLiteral("The model's server %1 does not know this address.").arg(server)
                               : QStringLiteral("There is no model \"%1\" at %2.").arg(model, server);
    case 429:
        return QStringLiteral("The model's server %1 is asked too often. Please wait a moment.").arg(server);
    case 503:
        return QStringLiteral("The model's server %1 is not ready. Please try again.").arg(server);
    default:
        return QStringLiteral("The model's server %1 answered with status %2.").arg(server).arg(reply.status);
    }
}

} // namespace

QString upstreamMessage(const QByteArray &body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (document.isObject()) {
        return oneLine(messageIn(document.object()));
    }
    return isPage(body) ? QString() : oneLine(QString::fromUtf8(body.left(4 * longestMessage)));
}

ServiceError unansweredError(UpstreamReply::Outcome outcome, const QString &server)
{
    const bool late = outcome == UpstreamReply::Outcome::OutOfTime;
    return {late ? ErrorCode::UpstreamTimeout : ErrorCode::UpstreamFailed, outcomeText(outcome, server)};
}

ServiceError upstreamError(const UpstreamReply &reply, const UpstreamAddress &address, const QString &model)
{
    if (!reply.isAnswered()) {
        return unansweredError(reply.outcome, QStringLiteral("model's server ") + address.text());
    }
    return {ErrorCode::UpstreamFailed, withReason(refused(reply, address.text(), model), reply.body)};
}

ServiceError unusableAnswer(const UpstreamReply &reply, const UpstreamAddress &address)
{
    const QString sentence = QStringLiteral("What the model's server %1 answered cannot be used.").arg(address.text());
    const bool json = QJsonDocument::fromJson(reply.body).isObject();
    return {ErrorCode::UpstreamFailed, json ? withReason(sentence, reply.body) : sentence};
}

bool isContextTooLong(const UpstreamReply &reply)
{
    return reply.isAnswered()
        && (containsAny(errorCode(reply.body), {"context_length_exceeded", "exceed_context_size"})
            || containsAny(upstreamMessage(reply.body), {"maximum context length", "context size", "context length"}));
}

bool refusesMember(const UpstreamReply &reply, const char *member)
{
    return reply.isAnswered() && (reply.status == 400 || reply.status == 422) && reply.body.contains(member);
}

bool isQuotaSpent(const UpstreamReply &reply)
{
    return reply.status == 429
        && containsAny(errorCode(reply.body), {"insufficient_quota", "credit_balance_exhausted", "limit_exceeded"})
        && !containsAny(errorCode(reply.body), {"rate_limit"});
}

} // namespace tavro::assistantservice
