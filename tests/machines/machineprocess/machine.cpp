#include "machine.h"

#include "aicontroller/aicontroller_p.h"
#include "records.h"
#include "reporter.h"

#include <QJsonArray>
#include <QMetaEnum>

namespace tavro::machineprocess {

using aiassistant::AiControllerAccess;
using runtime::MachineRuntime;

namespace {

template <template <typename, typename...> class Signal, typename Lock, typename... Arguments>
void reportSignal(Signal<Lock, Arguments...> &signal, const QString &name)
{
    signal.connect([name](const std::decay_t<Arguments> &...arguments) {
        const QJsonArray with{toJson(arguments)...};
        report({{QStringLiteral("signal"), name}, {QStringLiteral("with"), with}});
    });
}

void reportRuntime(const QString &what, const QJsonValue &value)
{
    report({{QStringLiteral("runtime"), what}, {QStringLiteral("value"), value}});
}

QString nameOf(MachineRuntime::Connection connection)
{
    return QString::fromLatin1(
        QMetaEnum::fromType<MachineRuntime::Connection>().valueToKey(static_cast<int>(connection)));
}

template <typename Private>
QJsonObject headersOf(const Private &d)
{
    QJsonObject headers;
    for (const char *name : {"token", "userId", "node"})
        headers.insert(QLatin1String(name), QString::fromUtf8(d.resultRequest.rawHeader(name)));
    return headers;
}

} // namespace

Machine::Machine(const MachineOptions &options)
    : m_runtime(options.roles, options.nats)
{
    reportConnection();
    reportSignals();
    configure(options);
}

void Machine::configure(const MachineOptions &options)
{
    m_controller.setZVRuntime(&m_runtime);
    m_controller.setDomain(options.service);
    m_controller.createTimer();
    // With no time between them, the polls follow at once and never run into the time-out.
    m_controller.setSingleTickTime(options.ticksByHand ? 5 : 0);
    AiControllerAccess::of(m_controller).pQueryTimer->blockSignals(options.ticksByHand);
}

void Machine::reportSignals()
{
    auto &c = m_controller;
    reportSignal(c.sigDownloadPictureFinished, QStringLiteral("downloadPictureFinished"));
    reportSignal(c.sigAgentCmds, QStringLiteral("agentCmds"));
    reportSignal(c.sigAiNotify, QStringLiteral("aiNotify"));
    reportSignal(c.sigResetMainWidget, QStringLiteral("resetMainWidget"));
    reportSignal(c.sigGenerateTextFinished, QStringLiteral("generateTextFinished"));
    reportSignal(c.sigGeneratePictureFinished, QStringLiteral("generatePictureFinished"));
    reportSignal(c.sigRequestFailed, QStringLiteral("requestFailed"));
    reportSignal(c.sigErrorOccured, QStringLiteral("errorOccured"));
    reportSignal(c.sigChatItemEvent, QStringLiteral("chatItemEvent"));
    reportSignal(c.sigRequestTimeout, QStringLiteral("requestTimeout"));
    reportSignal(c.sigDeleteGeneratingItem, QStringLiteral("deleteGeneratingItem"));
    reportSignal(c.sigNotify, QStringLiteral("notify"));
}

void Machine::reportConnection()
{
    const auto *const r = &m_runtime;
    QObject::connect(r, &MachineRuntime::sigConnectionChanged, r, [](auto connection, const QString & /*text*/) {
        reportRuntime(QStringLiteral("connection"), nameOf(connection));
    });
    QObject::connect(r, &MachineRuntime::sigServerPresentChanged, r,
                     [](bool present) { reportRuntime(QStringLiteral("serverPresent"), present); });
    QObject::connect(r, &MachineRuntime::sigServingChanged, r,
                     [](bool serving) { reportRuntime(QStringLiteral("serving"), serving); });
    QObject::connect(r, &MachineRuntime::sigAnotherServer, r,
                     [](const QString &name) { reportRuntime(QStringLiteral("anotherServer"), name); });
    QObject::connect(r, &MachineRuntime::sigMessageLost, r, [](const QString &name, const QString & /*reason*/) {
        reportRuntime(QStringLiteral("lost"), name);
    });
}

QJsonObject Machine::state()
{
    const auto &d = AiControllerAccess::of(m_controller);
    return {{QStringLiteral("history"), d.historyArray},
            {QStringLiteral("reqId"), d.strReqId},
            {QStringLiteral("prompt"), d.strPrompt},
            {QStringLiteral("lastPictureUrl"), d.strLastPictureUrl},
            {QStringLiteral("querying"), d.bQuerying},
            {QStringLiteral("stopped"), d.bStopGenerate},
            {QStringLiteral("deepModel"), d.bEnableDeepModel},
            {QStringLiteral("onlineSearch"), d.bEnableOnlineSearch},
            {QStringLiteral("timerRuns"), d.pQueryTimer->isActive()},
            {QStringLiteral("headers"), headersOf(d)},
            {QStringLiteral("connection"), nameOf(m_runtime.connection())},
            {QStringLiteral("serving"), m_runtime.isServing()}};
}

void Machine::seed(const QJsonObject &values)
{
    auto &d = AiControllerAccess::of(m_controller);
    const auto value = [&](const char *key) { return values.value(QLatin1String(key)); };
    d.historyArray = value("history").toArray();
    d.strReqId = value("reqId").toString();
    d.strLastPictureUrl = value("lastPictureUrl").toString();
    d.bQuerying = value("querying").toBool();
    d.bEnableDeepModel = value("deepModel").toBool();
    d.bEnableOnlineSearch = value("onlineSearch").toBool();
}

void Machine::tick()
{
    AiControllerAccess::of(m_controller).slotOnTimeout();
}

} // namespace tavro::machineprocess
