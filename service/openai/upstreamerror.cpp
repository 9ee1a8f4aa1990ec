#include "openai/upstreamerror.h"

#include "openai/errorbody.h"
#include "openai/outcometext.h"
#include "openai/retryafter.h"

namespace tavro::assistantservice {

namespace {

QString withReason(const QString &sentence, const QByteArray &body)
{
    const QString reason = upstreamMessage(body);
    return reason.isEmpty() ? sentence : sentence + QStringLiteral(" It says: ") + reason;
}

QString withWait(const QString &sentence, const UpstreamReply &reply, const char *otherwise)
{
    const std::optional<std::chrono::seconds> wait = wishedWait(reply.retryAfter);
    return sentence
        + (wait ? QStringLiteral(" It asks for a wait of %1.").arg(waitText(*wait)) : QLatin1String(otherwise));
}

// Servers say 404 of both, an unknown model and an unknown address.
bool isModelUnknown(const UpstreamReply &reply)
{
    const QString message = upstreamMessage(reply.body);
    return containsAny(upstreamErrorCode(reply.body), {"model"})
        || (containsAny(message, {"model"})
            && containsAny(message, {"not found", "not exist", "no such", "unknown", "not available", "not loaded"}));
}

QString notFound(const UpstreamReply &reply, const QString &server, const QString &model)
{
    return !model.isEmpty() && isModelUnknown(reply)
        ? QStringLiteral("There is no model \"%1\" at %2.").arg(model, server)
        : QStringLiteral("The model's server %1 does not know this address. Please check it; most end in /v1.")
              .arg(server);
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
        return notFound(reply, server, model);
    case 429:
        return withWait(QStringLiteral("The model's server %1 is asked too often.").arg(server), reply,
                        " Please wait a moment.");
    case 503:
    case 529:
        return withWait(QStringLiteral("The model's server %1 is not ready.").arg(server), reply, " Please try again.");
    default:
        return QStringLiteral("The model's server %1 answered with status %2.").arg(server).arg(reply.status);
    }
}

QString whyUnusable(const UpstreamReply &reply, const char *member)
{
    switch (bodyKind(reply)) {
    case BodyKind::Empty:
        return QStringLiteral("it is empty. Please look into the server's log.");
    case BodyKind::Page:
        return QStringLiteral("it is a web page, perhaps of a log-in or a proxy. Please check the address.");
    case BodyKind::EventStream:
        return QStringLiteral("it is a stream of events, which nobody asked for. Please have the server answer in one "
                              "piece.");
    case BodyKind::Json:
        return QStringLiteral("there is nothing in its \"%1\". Please check the address; most end in /v1.")
            .arg(QLatin1String(member));
    default:
        return QStringLiteral("it is no JSON that can be read. Please check the address.");
    }
}

} // namespace

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

ServiceError unusableAnswer(const UpstreamReply &reply, const UpstreamAddress &address, const char *member)
{
    const QString sentence = QStringLiteral("What the model's server %1 answered cannot be used").arg(address.text());
    const bool saysWhy = bodyKind(reply) == BodyKind::Json && !upstreamMessage(reply.body).isEmpty();
    return {ErrorCode::UpstreamFailed,
            saysWhy ? withReason(sentence + QLatin1Char('.'), reply.body)
                    : sentence + QStringLiteral(": ") + whyUnusable(reply, member)};
}

bool isContextTooLong(const UpstreamReply &reply)
{
    return reply.isAnswered()
        && (containsAny(upstreamErrorCode(reply.body), {"context_length_exceeded", "exceed_context_size"})
            || containsAny(upstreamMessage(reply.body), {"maximum context length", "context size", "context length"}));
}

bool refusesMember(const UpstreamReply &reply, const char *member)
{
    return reply.isAnswered() && (reply.status == 400 || reply.status == 422 || reply.status == 500)
        && reply.body.contains(member);
}

bool lacksToolSetup(const UpstreamReply &reply)
{
    return reply.isAnswered() && !reply.isGood()
        && containsAny(upstreamMessage(reply.body), {"--jinja", "--enable-auto-tool-choice"});
}

bool isQuotaSpent(const UpstreamReply &reply)
{
    const QString code = reply.status == 429 ? upstreamErrorCode(reply.body) : QString();
    return containsAny(code, {"insufficient_quota", "credit_balance_exhausted", "limit_exceeded"})
        && !containsAny(code, {"rate_limit"});
}

} // namespace tavro::assistantservice
