#include "aicontroller/aicontroller_p.h"
#include "aicontroller/imagecache.h"
#include "common/hostlog.h"
#include "common/loggingcategories.h"
#include "common/logtext.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QUrl>

#include <chrono>
#include <utility>

namespace tavro::aiassistant {

namespace {

constexpr std::chrono::milliseconds pictureStall{30'000};

QNetworkRequest pictureRequest(const QString &address)
{
    QNetworkRequest request{QUrl(address)};
    request.setTransferTimeout(static_cast<int>(pictureStall.count()));
    return request;
}

QPixmap toPixmap(const QImage &picture)
{
    // Without a GUI application Qt ends the program at the first pixmap.
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) ? QPixmap::fromImage(picture) : QPixmap();
}

} // namespace

void AiController::Private::queryImageData(const PicturedGeneratedPack &pack)
{
    if (!canUseNetwork("a picture"))
        return;
    if (!pendingImagePack.source.url.empty() && pendingImagePack.source.url == pack.source.url) {
        qCDebug(lcController) << "Same image URL is already being requested, skipping...";
        return;
    }
    pendingImagePack = pack;
    const QNetworkReply *const reply = downloadManager->get(pictureRequest(QString::fromStdString(pack.source.url)));
    connect(reply, &QNetworkReply::finished, this, &Private::slotQueryImageDataFinished);
}

// Which question the picture belongs to is settled when its bytes arrive, not when they have been decoded.
void AiController::Private::slotQueryImageDataFinished()
{
    const ReplySlot running(this);
    BoundedReply *const reply = finishedReply();
    const PicturedGeneratedPack pack = std::exchange(pendingImagePack, {});
    if (!reply || reply->error() != QNetworkReply::NoError) {
        const int error = reply ? reply->error() : QNetworkReply::UnknownNetworkError;
        decoder.decode({}, [this, pack, error](const QImage &) { announceUnreachablePicture(pack, error); });
        return;
    }
    decoder.decode(reply->takeBody(), [this, pack](const QImage &picture) { announcePicture(pack, picture); });
}

void AiController::Private::announceUnreachablePicture(const PicturedGeneratedPack &pack, int error)
{
    if (!downloadManager)
        return;
    controller->sigGeneratePictureFinished(QString::fromStdString(pack.content), pack.picInfo, AIImage());
    ZVAI_HOST_LOG(spdlog::level::err, "slotQueryImageDataFinished_ errorcode {} url {}", error,
                  loggableAddress(pack.source.url));
}

void AiController::Private::announcePicture(const PicturedGeneratedPack &pack, const QImage &picture)
{
    if (!downloadManager)
        return;
    AIImage image;
    image.pixmap = toPixmap(picture);
    if (image.pixmap.isNull()) {
        qCDebug(lcController) << "convert raw data to QPixmap object failed.";
    } else {
        image.description = pack.source.description;
        image.url = pack.source.url;
    }
    controller->sigGeneratePictureFinished(QString::fromStdString(pack.content), pack.picInfo, image);
}

void AiController::Private::slotDownloadPicture(const QString &strNetUrl)
{
    if (!canUseNetwork("a download"))
        return;
    const QNetworkReply *const reply = downloadManager->get(pictureRequest(strNetUrl));
    connect(reply, &QNetworkReply::finished, this, &Private::slotDownloadImageFinished);
}

void AiController::Private::slotDownloadImageFinished()
{
    const ReplySlot running(this);
    BoundedReply *const reply = finishedReply();
    if (!reply || reply->error() != QNetworkReply::NoError) {
        const int error = reply ? reply->error() : QNetworkReply::UnknownNetworkError;
        ZVAI_HOST_LOG(spdlog::level::err, "slotDownloadImageFinished_ errorcode {} url {}", error,
                      loggableAddress(strLastPictureUrl).toStdString());
        return;
    }
    const QByteArray bytes = reply->takeBody();
    if (imagecache::makeDirectory())
        qCDebug(lcController) << "Picture cathe Dir has been created" << imagecache::directory();
    else
        qCDebug(lcController) << "Picture cathe Dir couldn't be created" << imagecache::directory();
    const QString path = imagecache::save(bytes);
    if (path.isEmpty())
        return;
    if (std::exchange(bPlayAfterDownload, false))
        completeCommands(path);
    else
        controller->downloadPictureFinished(path);
}

} // namespace tavro::aiassistant
