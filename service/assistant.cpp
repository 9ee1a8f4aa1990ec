#include "assistant.h"

#include "requestbodies.h"
#include "secrets.h"
#include "servicelog.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <exception>
#include <new>

namespace tavro::assistantservice {

namespace {

bool isHostCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '-'
        || c == '_' || c == ':' || c == '[' || c == ']';
}

// The header comes from outside and ends up in an address that others fetch.
bool isUsableHost(const QByteArray &host)
{
    constexpr int longestHost = 255;
    return !host.isEmpty() && host.size() <= longestHost && std::all_of(host.begin(), host.end(), isHostCharacter);
}

ServiceError engineFailure()
{
    return {ErrorCode::EngineFailed, QStringLiteral("The assistant failed while working on this. Please try again.")};
}

// An engine that throws must cost one answer and not the service.
template <typename Result, typename Work>
Result resultOf(Work work)
{
    try {
        return work();
    } catch (const std::exception &) {
        Result result;
        result.error = engineFailure();
        return result;
    }
}

Reply outOfMemoryReply()
{
    return errorReply(
        {ErrorCode::EngineFailed,
         QStringLiteral("The assistant service has not enough memory for this. Please try again in a moment.")});
}

} // namespace

Assistant::Assistant(AssistantSettings settings, std::unique_ptr<Engine> engine)
    : m_settings(std::move(settings))
    , m_engine(std::move(engine))
    , m_outOfMemory(outOfMemoryReply())
    , m_store(m_settings.storeLimits)
    , m_workers(m_settings.workers)
{ }

Reply Assistant::generateText(const Caller &caller, const QByteArray &body)
{
    return guarded(&Assistant::readTextQuestion, caller, body);
}

Reply Assistant::generatePicture(const Caller &caller, const QByteArray &body)
{
    return guarded(&Assistant::readPictureWish, caller, body);
}

Reply Assistant::pollResult(const Caller &caller, const QByteArray &body)
{
    return guarded(&Assistant::readPoll, caller, body);
}

// A request that there is no memory for must cost one answer and not the service. There may be none for the answer
// either, so it is there already.
Reply Assistant::guarded(Endpoint endpoint, const Caller &caller, const QByteArray &body)
{
    try {
        return (this->*endpoint)(caller, body);
    } catch (const std::bad_alloc &) {
        serviceLog().error("event=out-of-memory");
        return m_outOfMemory;
    }
}

Reply Assistant::readTextQuestion(const Caller &caller, const QByteArray &body)
{
    if (const ServiceError error = checkToken(caller)) {
        return errorReply(error);
    }
    TextRequest request;
    if (const ServiceError error = readTextRequest(body, m_settings.bodyLimits, request)) {
        return errorReply(error);
    }
    QString id;
    if (const ServiceError error = admit(false, body, id)) {
        return errorReply(error);
    }
    start(id, [this, id, request](const std::atomic<bool> &cancelled) {
        m_store.finishText(id, resultOf<TextResult>([&] { return m_engine->answer(request, cancelled); }));
    });
    return acceptedReply(id);
}

Reply Assistant::readPictureWish(const Caller &caller, const QByteArray &body)
{
    if (const ServiceError error = checkToken(caller)) {
        return errorReply(error);
    }
    PictureRequest request;
    if (const ServiceError error = readPictureRequest(body, m_settings.bodyLimits, request)) {
        return errorReply(error);
    }
    QString id;
    if (const ServiceError error = admit(true, body, id)) {
        return errorReply(error);
    }
    start(id, [this, id, request](const std::atomic<bool> &cancelled) {
        m_store.finishPicture(id, resultOf<PictureResult>([&] { return m_engine->draw(request, cancelled); }));
    });
    return acceptedReply(id);
}

// A request that never gets a result would count as unfinished for ever.
void Assistant::start(const QString &requestId, const Work &work)
{
    const auto orDrop = [this, requestId](const auto &step) {
        try {
            step();
        } catch (const std::exception &) {
            m_store.drop(requestId);
            throw;
        }
    };
    orDrop([&] {
        m_workers.post([work, orDrop](const std::atomic<bool> &cancelled) { orDrop([&] { work(cancelled); }); });
    });
}

Reply Assistant::readPoll(const Caller &caller, const QByteArray &body)
{
    if (const ServiceError error = checkToken(caller)) {
        return errorReply(error);
    }
    PollRequest request;
    if (const ServiceError error = readPollRequest(body, request)) {
        return errorReply(error);
    }
    const PollResult result = m_store.poll(request.requestId, request.picture);
    Reply reply;
    if (result.error) {
        reply = errorReply(result.error);
    } else if (result.working) {
        reply = workingReply();
    } else {
        reply = readyReply(result, request.picture ? pictureAddress(caller, result.pictureId) : QString());
    }
    reply.requestId = request.requestId;
    return reply;
}

Reply Assistant::picture(const QString &pictureId)
{
    const std::shared_ptr<const StoredPicture> found = m_store.picture(pictureId);
    if (!found) {
        return httpErrorReply({ErrorCode::NotFound, QStringLiteral("There is no such picture (any more).")});
    }
    Reply reply;
    reply.contentType = found->mediaType;
    reply.picture = found;
    return reply;
}

Reply Assistant::health()
{
    QJsonObject state = m_engine->state();
    state.insert(QStringLiteral("status"), QStringLiteral("ok"));
    state.insert(QStringLiteral("unfinished"), m_store.unfinished());
    state.insert(QStringLiteral("pictureBytes"), m_store.pictureBytes());
    Reply reply;
    reply.body = QJsonDocument(state).toJson(QJsonDocument::Compact);
    return reply;
}

void Assistant::stop()
{
    m_stopping = true;
    m_workers.stop();
}

ServiceError Assistant::checkToken(const Caller &caller) const
{
    if (m_settings.token.isEmpty() || equalSecrets(caller.token, m_settings.token)) {
        return {};
    }
    return {ErrorCode::WrongToken,
            caller.token.isEmpty()
                ? QStringLiteral("This assistant service needs a token. Please enter it in the settings.")
                : QStringLiteral("The assistant service does not accept this token. Please check the settings.")};
}

ServiceError Assistant::admit(bool picture, const QByteArray &body, QString &requestId)
{
    if (m_stopping) {
        return {ErrorCode::Stopping, QStringLiteral("The assistant service is being stopped.")};
    }
    return m_store.add(picture, body.size(), requestId);
}

QString Assistant::pictureAddress(const Caller &caller, const QString &pictureId) const
{
    QString start = m_settings.publicUrl;
    if (start.isEmpty()) {
        start = isUsableHost(caller.host) ? QStringLiteral("http://") + QString::fromLatin1(caller.host) : m_ownUrl;
    }
    return start + QStringLiteral("/pictures/") + pictureId;
}

} // namespace tavro::assistantservice
