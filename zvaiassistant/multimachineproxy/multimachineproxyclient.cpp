#include "multimachineproxy/multimachineproxyclient.h"

#include "aicontroller/aicontroller.h"
#include "multimachineproxy/callnames.h"
#include "multimachineproxy/callreceiver.h"
#include "multimachineproxy/callsender.h"

#include <QString>

namespace tavro::aiassistant {

class MultimachineProxyClient::Private {
public:
    Private(MultimachineProxyClient *proxy, AiController *target, IZVRuntime *host);
    ~Private();

    Private(const Private &) = delete;
    Private &operator=(const Private &) = delete;

    void subscribeOutcomes() const;
    void subscribeFailures() const;

    IZVRuntime *const runtime;
    AiController *const controller;
    MultimachineProxyClient *const owner;
    const CallSender send{runtime, &IZVRuntime::sendToServer};
};

MultimachineProxyClient::Private::Private(MultimachineProxyClient *proxy, AiController *target, IZVRuntime *host)
    : runtime(host)
    , controller(target)
    , owner(proxy)
{
    subscribeOutcomes();
    // What these two would tell, a client does not want to know: its own panel goes on with its conversation.
    runtime->unregisterCallHandler(completion::clearHistoryRecordFinished);
    runtime->unregisterCallHandler(completion::clearHeaderFinished);
    subscribeFailures();
}

MultimachineProxyClient::Private::~Private()
{
    for (const char *name : completion::all)
        runtime->unregisterCallHandler(name);
}

void MultimachineProxyClient::Private::subscribeOutcomes() const
{
    using Target = AiController;
    subscribe(*runtime, completion::generateTextFinished, controller, &Target::generateTextFinished);
    subscribe(*runtime, completion::generateImageFinished, controller, &Target::generatePictureFinished);
    subscribe(*runtime, completion::downloadPictureFinished, controller, &Target::downloadPictureFinished);
    subscribe(*runtime, completion::stopGenerateFinished, controller, &Target::stopGenerate);
    subscribe(*runtime, completion::deleteGeneratingItem, controller, &Target::deleteGeneratingItem);
    subscribe(*runtime, completion::activeDeepseekFinished, controller, &Target::activeDeepseekModel);
    subscribe(*runtime, completion::activeOnlineSearchFinished, controller, &Target::activeOnlineSearch);
    subscribe(*runtime, completion::clearCatheFinished, controller, &Target::clearCathe);
}

void MultimachineProxyClient::Private::subscribeFailures() const
{
    using Target = AiController;
    subscribe(*runtime, completion::requestFailed, controller, &Target::requestFailedFinished);
    subscribe(*runtime, completion::errorOccured, controller, &Target::errorOccuredFinished);
    subscribe(*runtime, completion::requestTimeout, controller, &Target::requesetTimeout);
}

MultimachineProxyClient::MultimachineProxyClient(AiController *controller, IZVRuntime *runtime)
    : d(std::make_unique<Private>(this, controller, runtime))
{ }

MultimachineProxyClient::~MultimachineProxyClient() = default;

void MultimachineProxyClient::generateText(const QString &question)
{
    d->send(call::generateText, question);
}

void MultimachineProxyClient::generateImage(const PictureGenerateInfo &info)
{
    d->send(call::generateImage, info);
}

void MultimachineProxyClient::downloadPicture(const QString &url)
{
    d->send(call::downloadPicture, url);
}

void MultimachineProxyClient::stopGenerate()
{
    d->send(call::stopGenerate);
}

void MultimachineProxyClient::activeDeepseek(bool active)
{
    d->send(call::activeDeepseek, active);
}

void MultimachineProxyClient::activeOnlineSearch(bool active)
{
    d->send(call::activeOnlineSearch, active);
}

void MultimachineProxyClient::clearCathe()
{
    d->send(call::clearCathe);
}

void MultimachineProxyClient::clearHistoryRecord()
{
    d->send(call::clearHistoryRecord);
}

void MultimachineProxyClient::updateHeader(const std::vector<std::string> &info)
{
    d->send(call::updateHeader, info);
}

void MultimachineProxyClient::clearHeader()
{
    d->send(call::clearHeader);
}

void MultimachineProxyClient::aiWidgetShow()
{
    d->send(call::aiWidgetShow);
}

} // namespace tavro::aiassistant
