#include "http/endpoints.h"

#include "http/bodyhead.h"

#include <cstring>

namespace tavro::assistantservice {

namespace {

constexpr char picturesPath[] = "/pictures/";
constexpr char healthPath[] = "/healthz";

Caller callerOf(const HttpHead &head)
{
    return {head.value("token"), head.value("Host")};
}

RequestHead rulesHead(const HttpHead &head)
{
    return {head.method, head.joined("Host"), head.joined("Origin"), head.joined("Sec-Fetch-Site"),
            head.joined("Content-Type")};
}

ServiceError wrongMethod(const char *method)
{
    return {ErrorCode::WrongMethod, QStringLiteral("This address takes %1 requests only.").arg(QLatin1String(method))};
}

ServiceError unknownPath()
{
    return {ErrorCode::NotFound, QStringLiteral("There is nothing at this address. Please check the service address.")};
}

} // namespace

Endpoints::Endpoints(Assistant &assistant, CallerRules rules, qint64 largestBody)
    : m_assistant(assistant)
    , m_rules(std::move(rules))
    , m_largestBody(largestBody)
    , m_posts{{"/ai/texttotext/generate/", &Assistant::generateText},
              {"/ai/texttoimage/generate/", &Assistant::generatePicture},
              {"/ai/result/filter/", &Assistant::pollResult}}
{ }

// Runs before any body is read: what is refused here must not make the service take in a body of any size.
std::optional<Reply> Endpoints::answerHead(const HttpHead &head)
{
    const bool endpoint = m_posts.count(head.path) > 0;
    if (endpoint && head.method == "POST") {
        const ServiceError error = refusal(head);
        return error ? std::optional(errorReply(error)) : std::nullopt;
    }
    if (const ServiceError error = m_rules.check(rulesHead(head))) {
        return httpErrorReply(error);
    }
    return endpoint ? httpErrorReply(wrongMethod("POST")) : answerGet(head);
}

Reply Endpoints::answer(const HttpHead &head, const QByteArray &body)
{
    return (m_assistant.*m_posts.at(head.path))(callerOf(head), body);
}

ServiceError Endpoints::refusal(const HttpHead &head) const
{
    if (const ServiceError error = m_rules.check(rulesHead(head))) {
        return error;
    }
    if (const ServiceError error = m_assistant.checkToken(callerOf(head))) {
        return error;
    }
    return checkBodyHead(head, m_largestBody);
}

Reply Endpoints::answerGet(const HttpHead &head)
{
    const bool picture = head.path.startsWith(picturesPath);
    if (!picture && head.path != healthPath) {
        return httpErrorReply(unknownPath());
    }
    if (head.method != "GET" && head.method != "HEAD") {
        return httpErrorReply(wrongMethod("GET"));
    }
    return picture
        ? m_assistant.picture(QString::fromLatin1(head.path.mid(static_cast<int>(std::strlen(picturesPath)))))
        : m_assistant.health();
}

} // namespace tavro::assistantservice
