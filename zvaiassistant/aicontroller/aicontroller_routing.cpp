#include "aicontroller/aicontroller_p.h"

#include <QString>

namespace tavro::aiassistant {

void AiController::textToGenerateText(const QString &text)
{
    if (ProxyClientPort *const proxy = d->client("GenerateText"))
        proxy->generateText(text);
    if (d->isLocalExecutor())
        generateText(text);
}

void AiController::textToGeneratePicture(const PictureGenerateInfo &info)
{
    if (ProxyClientPort *const proxy = d->client("GenerateImage"))
        proxy->generateImage(info);
    if (d->isLocalExecutor())
        generatePicture(info);
}

void AiController::toActiveDeepSeekModel(bool active)
{
    if (ProxyClientPort *const proxy = d->client("ActiveDeepseek"))
        proxy->activeDeepseek(active);
    if (d->isLocalExecutor())
        activeDeepseekModel(active);
}

void AiController::toActiveOnlineSearch(bool active)
{
    if (ProxyClientPort *const proxy = d->client("ActiveOnlineSearch"))
        proxy->activeOnlineSearch(active);
    if (d->isLocalExecutor())
        activeOnlineSearch(active);
}

void AiController::toClearCathe()
{
    if (ProxyClientPort *const proxy = d->client("ClearCathe"))
        proxy->clearCathe();
    if (d->isLocalExecutor())
        clearCathe();
}

void AiController::toClearHeaderInfo()
{
    if (ProxyClientPort *const proxy = d->client("ClearHeader"))
        proxy->clearHeader();
    if (d->isLocalExecutor())
        clearHeaderInfo();
}

void AiController::toClearHistoryRecord()
{
    if (ProxyClientPort *const proxy = d->client("ClearHistoryRecord"))
        proxy->clearHistoryRecord();
    if (d->isLocalExecutor())
        clearHistoryRecord();
}

void AiController::toStopGenerate()
{
    if (ProxyClientPort *const proxy = d->client("StopGenerate"))
        proxy->stopGenerate();
    if (d->isLocalExecutor())
        stopGenerate();
}

void AiController::toUpdateHeaderInfo(const std::vector<std::string> &info)
{
    if (ProxyClientPort *const proxy = d->client("UpdateHeader"))
        proxy->updateHeader(info);
    if (d->isLocalExecutor())
        updateHeaderInfo(info);
}

void AiController::toDownloadPicture(const QString &url)
{
    downloadPicture(url);
}

void AiController::notifyAiWidgetShow()
{
    if (ProxyClientPort *const proxy = d->client("AiWidgetShow"))
        proxy->aiWidgetShow();
}

} // namespace tavro::aiassistant
