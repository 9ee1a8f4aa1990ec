#include "aicontroller/aicontroller_p.h"

namespace tavro::aiassistant {

void AiController::requestFailed(const ChatItemBasic &basic)
{
    d->run([d = d.get()] { d->stopTimer(); });
    if (d->isProxyServer()) {
        if (ProxyServerPort *const proxy = d->server("RequestFailed"))
            proxy->requestFailed(basic);
        return;
    }
    if (d->isLocalExecutor())
        requestFailedFinished(basic);
}

void AiController::errorOccured(const ChatItemBasic &basic)
{
    d->run([d = d.get()] { d->stopTimer(); });
    if (ProxyServerPort *const proxy = d->server("ErrorOccured"))
        proxy->errorOccured(basic);
    if (d->isLocalExecutor())
        errorOccuredFinished(basic);
}

// The timer of a client machine keeps running.
void AiController::requesetTimeout(const ChatItemBasic &basic)
{
    const bool keepTimer = d->isProxyClient();
    d->run([d = d.get(), keepTimer] {
        d->nTickCount = 0;
        if (!keepTimer)
            d->stopTimer();
    });
    if (!d->isProxyServer())
        sigRequestTimeout(basic);
    else if (ProxyServerPort *const proxy = d->server("RequestTimeout"))
        proxy->requestTimeout(basic);
}

void AiController::generateTextFinished(const TextGeneratedPack &pack)
{
    sigGenerateTextFinished(pack);
}

void AiController::generatePictureFinished(const PicturedGeneratedPack &pack)
{
    queryImageData(pack);
}

void AiController::downloadPictureFinished(const QString &path)
{
    sigDownloadPictureFinished(path.toStdString());
}

void AiController::errorOccuredFinished(const ChatItemBasic &basic)
{
    sigErrorOccured(basic);
}

void AiController::requestFailedFinished(const ChatItemBasic &basic)
{
    if (d->isLocalExecutor())
        d->run([d = d.get()] { d->stopTimer(); });
    sigRequestFailed(basic);
}

void AiController::requestTimeoutFinished(const ChatItemBasic &basic)
{
    sigRequestTimeout(basic);
}

void AiController::deleteGeneratingItem()
{
    sigDeleteGeneratingItem();
}

} // namespace tavro::aiassistant
