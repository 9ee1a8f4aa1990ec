#include "assistant/upkeep.h"

#include "assistant/callpayload.h"

namespace tavro::playout {

using namespace aiassistant;

Upkeep::Upkeep(AiController &controller, WatchedRuntime &runtime)
    : m_controller(controller)
    , m_runtime(runtime)
{
    if (runtime.isProxyServer())
        lookAfterClients();
    else
        lookAfterOwnQuestions();
}

void Upkeep::lookAfterOwnQuestions()
{
    m_controller.sigGenerateTextFinished.connect([this](const auto &) { renewTime(); });
    m_controller.sigGeneratePictureFinished.connect([this](const auto &...) { renewTime(); });
    m_controller.sigErrorOccured.connect([this](const auto &) { renewTime(); });
    m_controller.sigRequestFailed.connect([this](const auto &) {
        m_controller.stopGenerate();
        renewTime();
    });
    m_controller.sigRequestTimeout.connect([this](const auto &) { m_controller.stopGenerate(); });
}

// Outcomes for clients are not announced on this machine, but sent.
void Upkeep::lookAfterClients()
{
    connect(&m_runtime, &WatchedRuntime::sigReceived, this, [this](const QByteArray &name) {
        if (isQuestion(name))
            renewTime();
    });
    connect(&m_runtime, &WatchedRuntime::sigSent, this, [this](const QByteArray &name) {
        if (name == "RequestFailed" || name == "RequestTimeout")
            m_controller.stopGenerate();
    });
}

// Declares a time-out that nobody hears, neither here nor on the clients.
void Upkeep::renewTime()
{
    m_runtime.setServing(false);
    m_controller.sigRequestTimeout.block();
    m_controller.requesetTimeout({});
    m_controller.sigRequestTimeout.unblock();
    m_runtime.setServing(true);
}

} // namespace tavro::playout
