#include "aicontroller/aicontroller_p.h"
#include "aicontroller/servicemessages.h"
#include "common/loggingcategories.h"
#include "zvruntime/izvruntime.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QUrl>

#include <future>

namespace tavro::aiassistant {

namespace {

QJsonArray toJson(const std::vector<std::pair<std::string, std::string>> &resources)
{
    const QString idKey = QStringLiteral("id");
    const QString nameKey = QStringLiteral("name");
    QJsonArray list;
    for (const auto &[id, name] : resources)
        list.append(QJsonObject{{idKey, QString::fromStdString(id)}, {nameKey, QString::fromStdString(name)}});
    return list;
}

} // namespace

void AiController::Private::onGenerateText(const QString &bGeranateText)
{
    if (!canUseNetwork("a text question"))
        return;
    ++nPosts;
    bPictureMode = false;
    strPrompt = bGeranateText;
    bStopGenerate = false;
    historyArray.append(message(Author::User, bGeranateText));

    QByteArray body;
    try {
        body = textRequestBody(bEnableDeepModel, bEnableOnlineSearch, historyArray, hostMediaList());
    } catch (const std::future_error &error) {
        qCWarning(lcController) << "the host did not give its media library:" << error.what();
        controller->requestFailed(currentItem());
        return;
    }
    textReply = postToService(Endpoint::text(), body);
    connect(textReply, &QNetworkReply::finished, this, &Private::slotRequestFinished);
    connect(textReply, &QNetworkReply::errorOccurred, this, &Private::networkError);
    startTimer();
}

// The error of a picture request is seen when its reply finishes, and only there.
void AiController::Private::onGeneratePicture(const PictureGenerateInfo &info)
{
    if (!canUseNetwork("a picture request"))
        return;
    ++nPosts;
    bPictureMode = true;
    strPrompt = QString::fromStdString(info.content);
    pictureInfo = info;
    bStopGenerate = false;

    const QNetworkReply *const reply = postToService(Endpoint::picture(), pictureRequestBody(info));
    connect(reply, &QNetworkReply::finished, this, &Private::slotRequestFinished);
    startTimer();
}

QNetworkReply *AiController::Private::postToService(const QString &endpoint, const QByteArray &body)
{
    resultRequest.setUrl(QUrl(domain + endpoint));
    return requestManager->post(resultRequest, body);
}

QJsonArray AiController::Private::mediaListArray()
{
    if (!bMediaArrayMade) {
        mediaArray = toJson(mediaResources);
        bMediaArrayMade = true;
    }
    return mediaArray;
}

// The library is the host's, so it is read on the host's thread. This thread waits meanwhile, which keeps the list as
// it is.
QJsonArray AiController::Private::hostMediaList()
{
    IZVRuntime *const host = runtime;
    if (!host || !host->needsDispatch(__FILE__, __LINE__))
        return mediaListArray();
    auto task = std::make_shared<std::packaged_task<QJsonArray()>>([this] { return mediaListArray(); });
    std::future<QJsonArray> list = task->get_future();
    // Only the dispatcher keeps the task: one that it drops breaks the promise and ends the wait.
    host->dispatcher().post([task = std::move(task)] { (*task)(); });
    return list.get();
}

} // namespace tavro::aiassistant
