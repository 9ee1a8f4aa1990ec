#include "aicontroller/aicontroller_p.h"
#include "aicontroller/servicemessages.h"
#include "common/hostlog.h"
#include "common/loggingcategories.h"
#include "common/logtext.h"

#include <QMetaEnum>

#include <limits>

namespace tavro::aiassistant {

namespace {

QString errorText(const QNetworkReply *reply)
{
    return reply ? reply->errorString() : QStringLiteral("no reply");
}

bool hasFailed(const QNetworkReply *reply)
{
    return !reply || reply->error() != QNetworkReply::NoError;
}

ServiceReply readingOf(const BoundedReply &reply)
{
    const auto *const reading = std::any_cast<ServiceReply>(&reply.reading());
    return reading ? *reading : ServiceReply();
}

// The product is meant to be a 32-bit one.
int elapsedMs(int ticks, int intervalMs)
{
    return static_cast<int>(static_cast<unsigned>(ticks) * static_cast<unsigned>(intervalMs));
}

} // namespace

BoundedReply *AiController::Private::finishedReply() const
{
    auto *const reply = qobject_cast<BoundedReply *>(sender());
    if (reply)
        reply->deleteLater();
    return reply;
}

ChatItemBasic AiController::Private::currentItem(const QString &message) const
{
    ChatItemBasic item;
    item.type = bPictureMode ? QuestionType::Picture : QuestionType::Text;
    item.question = strPrompt.toStdString();
    if (bPictureMode)
        item.picInfo = pictureInfo;
    item.message = message.toStdString();
    return item;
}

void AiController::Private::dropStopped()
{
    stopTimer();
    if (ProxyServerPort *const proxy = server("DeleteGeneratingItem"))
        proxy->deleteGeneratingItem();
}

void AiController::Private::slotRequestFinished()
{
    const ReplySlot running(this);
    const BoundedReply *const reply = finishedReply();
    if (bStopGenerate) {
        dropStopped();
        return;
    }
    if (hasFailed(reply)) {
        qCDebug(lcController) << "Error:" << errorText(reply);
        controller->requestFailed(currentItem());
        return;
    }
    const GenerationReply answer = readingOf(*reply).generation;
    switch (answer.kind) {
    case GenerationReply::Kind::NotJson:
        qCDebug(lcController) << "Failed to parse JSON response.";
        controller->requestFailed(currentItem());
        return;
    case GenerationReply::Kind::NoCode:
        qCDebug(lcController) << "onRequestFinished, rootObj not contain code";
        controller->requestFailed(currentItem());
        return;
    case GenerationReply::Kind::Refused:
        qCDebug(lcController) << "request failed!";
        controller->errorOccured(currentItem(answer.message));
        return;
    case GenerationReply::Kind::Accepted:
        // The timer that the post started asks for the result.
        strReqId = answer.reqId.value_or(strReqId);
        return;
    }
}

void AiController::Private::networkError(QNetworkReply::NetworkError error)
{
    qCDebug(lcController) << "Error : " << (textReply ? textReply->error() : error);
    qCDebug(lcController) << "Error Code : " << QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(error);
}

void AiController::Private::slotOnTimeout()
{
    if (!requestManager)
        return;
    const int interval = pQueryTimer ? pQueryTimer->interval() : 0;
    if (elapsedMs(nTickCount, interval) < nTimeoutMs) {
        if (nTickCount < std::numeric_limits<int>::max())
            ++nTickCount;
        dealActiveQuery();
    } else {
        controller->requesetTimeout(currentItem());
    }
}

void AiController::Private::dealActiveQuery()
{
    qCDebug(lcController) << "reqId:" << strReqId;
    if (strReqId.isEmpty())
        qCDebug(lcController) << "current answers have beeen returned!";
    else
        queryResult(strReqId, bPictureMode);
}

void AiController::Private::queryResult(const QString &reqId, bool pictureMode)
{
    if (bQuerying)
        return;
    if (bStopGenerate) {
        bQuerying = false;
        dropStopped();
        return;
    }
    bQuerying = true;
    const QNetworkReply *const reply = postToService(Endpoint::result(), resultRequestBody(pictureMode, reqId));
    connect(reply, &QNetworkReply::finished, this, &Private::slotQueryFinished);
}

// Where the flag of the running poll stays set, further polls wait until stopGenerate() or clearCathe().
void AiController::Private::slotQueryFinished()
{
    const ReplySlot running(this);
    const BoundedReply *const reply = finishedReply();
    if (bStopGenerate) {
        dropStopped();
        return;
    }
    if (hasFailed(reply)) {
        qCDebug(lcController) << "Request Error:" << errorText(reply);
        bQuerying = false;
        controller->requestFailed(currentItem());
        return;
    }
    const ResultReply result = readingOf(*reply).result;
    switch (result.kind) {
    case ResultReply::Kind::NotJson:
        return;
    case ResultReply::Kind::Working:
        qCDebug(lcController) << "Thinking...";
        bQuerying = false;
        return;
    case ResultReply::Kind::Failed:
        qCDebug(lcController) << "Query Answer Failed:" << result.message;
        bQuerying = false;
        controller->errorOccured(currentItem(result.message));
        return;
    case ResultReply::Kind::NoAnswers:
        qCDebug(lcController) << "dataObj not Contains answers!";
        controller->requestFailed(currentItem());
        return;
    case ResultReply::Kind::EmptyAnswers:
        qCDebug(lcController) << "Query Answer list is empty:";
        controller->requestFailed(currentItem());
        return;
    case ResultReply::Kind::Ready:
        deliver(result);
        return;
    }
}

// A receiver may ask the next question, clear the controller or destroy it while it is told the answer.
void AiController::Private::deliver(const ResultReply &result)
{
    const unsigned post = nPosts;
    const QString answeredId = strReqId;
    const QPointer<Private> self(this);
    if (bPictureMode) {
        if (!deliverPicture(result.answer, result.description))
            return;
    } else {
        deliverText(result.answer);
    }
    // The receivers of the answer may destroy the controller, which cppcheck does not see.
    // cppcheck-suppress knownConditionTrueFalse
    if (self && requestManager && !result.agentCmds.isEmpty())
        analyseAgentCmds(result.agentCmds);
    // cppcheck-suppress knownConditionTrueFalse
    if (!self)
        return;
    if (nPosts == post)
        stopTimer();
    if (strReqId == answeredId)
        strReqId.clear();
    bQuerying = false;
}

bool AiController::Private::deliverPicture(const QString &url, const QString &description)
{
    if (url == strLastPictureUrl) {
        qCDebug(lcController) << "Same picture URL received, skipping duplicate processing:" << loggableAddress(url);
        return false;
    }
    strDescription = description;
    strLastPictureUrl = url;
    ZVAI_HOST_LOG(spdlog::level::info, "notifyGeneratePictureFinished url {}", loggableAddress(url).toStdString());
    const PicturedGeneratedPack pack{
        strPrompt.toStdString(), pictureInfo, {description.toStdString(), url.toStdString()}};
    if (ProxyServerPort *const proxy = server("GenerateImageFinished"))
        proxy->generateImageFinished(pack);
    if (isLocalExecutor())
        controller->generatePictureFinished(pack);
    return true;
}

void AiController::Private::deliverText(const QString &answer)
{
    historyArray.append(message(Author::Assistant, answer));
    const TextGeneratedPack pack{strPrompt.toStdString(), answer.toStdString()};
    if (ProxyServerPort *const proxy = server("GenerateTextFinished"))
        proxy->generateTextFinished(pack);
    if (isLocalExecutor())
        controller->generateTextFinished(pack);
}

} // namespace tavro::aiassistant
