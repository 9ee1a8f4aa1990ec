#include "multimachineproxy/multimachineproxyserver.h"

#include "aicontroller/aicontroller.h"
#include "common/hostlog.h"
#include "multimachineproxy/callnames.h"
#include "multimachineproxy/callreceiver.h"
#include "multimachineproxy/callsender.h"

#include <QPointer>
#include <QString>

#include <cstddef>
#include <string>
#include <vector>

namespace tavro::aiassistant {

namespace {

constexpr std::size_t headerInfoSize = 3;

} // namespace

class MultimachineProxyServer::Private {
public:
    Private(MultimachineProxyServer *proxy, AiController *target, IZVRuntime *host);
    ~Private();

    Private(const Private &) = delete;
    Private &operator=(const Private &) = delete;

    void subscribeCalls();
    void onUpdateAIControllerRequestHeader(const std::vector<std::string> &info);
    void onClearHeader();
    void onAiWidgetShow();

    IZVRuntime *const runtime;
    AiController *const controller;
    MultimachineProxyServer *const owner;
    const CallSender send{runtime, &IZVRuntime::sendToClients};
};

MultimachineProxyServer::Private::Private(MultimachineProxyServer *proxy, AiController *target, IZVRuntime *host)
    : runtime(host)
    , controller(target)
    , owner(proxy)
{
    subscribeCalls();
}

MultimachineProxyServer::Private::~Private()
{
    for (const char *name : call::all)
        runtime->unregisterCallHandler(name);
}

void MultimachineProxyServer::Private::subscribeCalls()
{
    using Target = AiController;
    subscribe(*runtime, call::generateText, controller, &Target::generateText);
    subscribe(*runtime, call::generateImage, controller, &Target::generatePicture);
    subscribe(*runtime, call::downloadPicture, controller, &Target::downloadPicture);
    subscribe(*runtime, call::stopGenerate, controller, &Target::stopGenerate);
    subscribe(*runtime, call::activeDeepseek, controller, &Target::activeDeepseekModel);
    subscribe(*runtime, call::activeOnlineSearch, controller, &Target::activeOnlineSearch);
    subscribe(*runtime, call::clearCathe, controller, &Target::clearCathe);
    subscribe(*runtime, call::clearHistoryRecord, controller, &Target::clearHistoryRecord);
    subscribe(*runtime, call::updateHeader, this, &Private::onUpdateAIControllerRequestHeader);
    subscribe(*runtime, call::clearHeader, this, &Private::onClearHeader);
    subscribe(*runtime, call::aiWidgetShow, this, &Private::onAiWidgetShow);
}

void MultimachineProxyServer::Private::onUpdateAIControllerRequestHeader(const std::vector<std::string> &info)
{
    if (info.size() != headerInfoSize)
        return;
    ZVAI_HOST_LOG(spdlog::level::info, "--AIASSISTANT-- token is {}, userId is {}, node is {}", info[0], info[1],
                  info[2]);
    controller->setToken(QString::fromStdString(info[0]));
    controller->setUserId(QString::fromStdString(info[1]));
    controller->setNode(QString::fromStdString(info[2]));
}

void MultimachineProxyServer::Private::onClearHeader()
{
    controller->setToken(QString());
    controller->setUserId(QString());
    controller->setNode(QString());
    if (runtime->isProxyServer())
        owner->clearHeaderFinished();
}

// A receiver of the first signal may destroy the controller, and this object with it.
void MultimachineProxyServer::Private::onAiWidgetShow()
{
    const QPointer<AiController> shown = controller;
    shown->sigAiNotify(); // cppcheck-suppress nullPointerRedundantCheck ; null only afterwards
    if (shown)
        shown->sigNotify();
}

MultimachineProxyServer::MultimachineProxyServer(AiController *controller, IZVRuntime *runtime)
    : d(std::make_unique<Private>(this, controller, runtime))
{ }

MultimachineProxyServer::~MultimachineProxyServer() = default;

void MultimachineProxyServer::generateTextFinished(const TextGeneratedPack &pack)
{
    d->send(completion::generateTextFinished, pack);
}

void MultimachineProxyServer::generateImageFinished(const PicturedGeneratedPack &pack)
{
    d->send(completion::generateImageFinished, pack);
}

void MultimachineProxyServer::downloadPictureFinished(const QString &url)
{
    d->send(completion::downloadPictureFinished, url);
}

void MultimachineProxyServer::stopGenerateFinished()
{
    d->send(completion::stopGenerateFinished);
}

void MultimachineProxyServer::deleteGeneratingItem()
{
    d->send(completion::deleteGeneratingItem);
}

void MultimachineProxyServer::activeDeepseekFinished(bool active)
{
    d->send(completion::activeDeepseekFinished, active);
}

void MultimachineProxyServer::activeOnlineSearchFinished(bool active)
{
    d->send(completion::activeOnlineSearchFinished, active);
}

void MultimachineProxyServer::clearCatheFinished()
{
    d->send(completion::clearCatheFinished);
}

void MultimachineProxyServer::clearHistoryRecordFinished()
{
    d->send(completion::clearHistoryRecordFinished);
}

void MultimachineProxyServer::clearHeaderFinished()
{
    d->send(completion::clearHeaderFinished);
}

void MultimachineProxyServer::requestFailed(const ChatItemBasic &basic)
{
    d->send(completion::requestFailed, basic);
}

void MultimachineProxyServer::errorOccured(const ChatItemBasic &basic)
{
    d->send(completion::errorOccured, basic);
}

void MultimachineProxyServer::requestTimeout(const ChatItemBasic &basic)
{
    d->send(completion::requestTimeout, basic);
}

} // namespace tavro::aiassistant
