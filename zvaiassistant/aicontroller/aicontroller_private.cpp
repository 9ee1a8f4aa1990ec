#include "aicontroller/aicontroller_p.h"
#include "aicontroller/servicemessages.h"
#include "common/loggingcategories.h"
#include "zvruntime/izvruntime.h"

#include <QThread>

#include <limits>

namespace tavro::aiassistant {

namespace {

constexpr int defaultTickMs = 5000;
constexpr TransferLimits replyLimits{16 * 1024 * 1024};
constexpr TransferLimits pictureLimits{256 * 1024 * 1024};

void registerRecords()
{
    qRegisterMetaType<AIImage>("AIImage");
    qRegisterMetaType<ChatItemContext>("ChatItemContext");
    qRegisterMetaType<TextGeneratedPack>("TextGeneratedPack");
    qRegisterMetaType<PictureGenerateInfo>("PictureGenerateInfo");
    qRegisterMetaType<PicturedGeneratedPack>("PicturedGeneratedPack");
}

bool fitsHeader(const QString &value)
{
    return !value.contains(QLatin1Char('\r')) && !value.contains(QLatin1Char('\n')) && !value.contains(QChar::Null);
}

// A null value would take the header away.
QByteArray headerBytes(const QString &value)
{
    return value.isEmpty() ? QByteArray("") : value.toUtf8();
}

QList<QNetworkReply *> replies(const QNetworkAccessManager &manager)
{
    return manager.findChildren<QNetworkReply *>(QString(), Qt::FindDirectChildrenOnly);
}

// The replies are taken off the receiver first: closing a running one tells it that the reply has finished.
void retire(std::unique_ptr<QNetworkAccessManager> manager, const QObject *receiver)
{
    const auto open = replies(*manager);
    for (QNetworkReply *reply : open) {
        reply->disconnect(receiver);
        reply->close();
        reply->deleteLater();
    }
    manager.release()->deleteLater();
}

} // namespace

// The controller is the parent so that both always live in the same thread.
AiController::Private::Private(AiController *owner)
    : TaskReceiver(owner)
    , controller(owner)
    , requestManager(std::make_unique<BoundedNetwork>(replyLimits, &readServiceReply))
    , downloadManager(std::make_unique<BoundedNetwork>(pictureLimits, nullptr))
    , decoder(this)
{
    resultRequest.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    resultRequest.setRawHeader("deviceId", "device123");
    registerRecords();
}

// A receiver of an outcome may destroy the controller while the reply that brought it is still telling of its end. Then
// alone the managers have to wait: in a thread that has ended nobody would delete them later.
AiController::Private::~Private()
{
    for (auto *manager : {&requestManager, &downloadManager}) {
        if (*manager && nReplySlots > 0)
            retire(std::move(*manager), this);
    }
}

AiController::Private::ReplySlot::ReplySlot(Private *owner)
    : m_owner(owner)
{
    ++m_owner->nReplySlots;
}

AiController::Private::ReplySlot::~ReplySlot()
{
    if (m_owner)
        --m_owner->nReplySlots;
}

bool AiController::Private::isProxyServer() const
{
    const IZVRuntime *const host = runtime;
    return host && host->isProxyServer();
}

bool AiController::Private::isProxyClient() const
{
    const IZVRuntime *const host = runtime;
    return host && host->isProxyClient();
}

bool AiController::Private::isLocalExecutor() const
{
    const IZVRuntime *const host = runtime;
    return !host || host->isLocalExecutor();
}

void AiController::Private::setRuntime(IZVRuntime *host)
{
    runtime = host;
    proxyClient = nullptr;
    proxyServer = nullptr;
    if (isProxyClient()) {
        proxyClients.push_back(makeProxyClient(*controller, *host));
        proxyClient = proxyClients.back().get();
    }
    if (isProxyServer()) {
        proxyServers.push_back(makeProxyServer(*controller, *host));
        proxyServer = proxyServers.back().get();
    }
}

ProxyClientPort *AiController::Private::client(const char *call) const
{
    if (!isProxyClient())
        return nullptr;
    ProxyClientPort *const proxy = proxyClient;
    if (!proxy)
        qCWarning(lcController) << "not sent to the serving machine, there is no proxy client:" << call;
    return proxy;
}

ProxyServerPort *AiController::Private::server(const char *call) const
{
    if (!isProxyServer())
        return nullptr;
    ProxyServerPort *const proxy = proxyServer;
    if (!proxy)
        qCWarning(lcController) << "not sent to the client machines, there is no proxy server:" << call;
    return proxy;
}

void AiController::Private::setHeader(const QByteArray &name, const QString &value)
{
    if (fitsHeader(value))
        resultRequest.setRawHeader(name, headerBytes(value));
    else
        qCWarning(lcController) << "refused a value with a line break or a NUL for the header" << name;
}

void AiController::Private::setResources(const Resources &resources)
{
    if (resources == mediaResources)
        return;
    mediaResources = resources;
    mediaArray = {};
    bMediaArrayMade = false;
}

void AiController::Private::initTimer()
{
    delete pQueryTimer;
    pQueryTimer = new QTimer(this);
    pQueryTimer->setTimerType(Qt::PreciseTimer);
    pQueryTimer->setInterval(defaultTickMs);
    connect(pQueryTimer, &QTimer::timeout, this, &Private::slotOnTimeout);
}

void AiController::Private::setTickSeconds(int seconds)
{
    constexpr int mostSeconds = std::numeric_limits<int>::max() / 1000;
    if (!pQueryTimer)
        qCWarning(lcController) << "the poll interval is not set: the poll timer has not been created";
    else if (seconds < 0)
        qCWarning(lcController) << "refused a negative poll interval:" << seconds;
    else
        pQueryTimer->setInterval(qMin(seconds, mostSeconds) * 1000);
}

void AiController::Private::startTimer()
{
    if (pQueryTimer)
        pQueryTimer->start();
    else
        qCWarning(lcController) << "no answer will be asked for: the poll timer has not been created";
}

void AiController::Private::stopTimer()
{
    if (pQueryTimer)
        pQueryTimer->stop();
}

void AiController::Private::beginNewConversation()
{
    historyArray = {};
}

void AiController::Private::stopGenerate()
{
    bStopGenerate = true;
    bQuerying = false;
}

void AiController::Private::resetConversation()
{
    beginNewConversation();
    strReqId.clear();
    strLastPictureUrl.clear();
    strDescription.clear();
    strPrompt.clear();
    pictureInfo = {};
    bQuerying = false;
    bPictureMode = true;
    bStopGenerate = false;
    bEnableDeepModel = false;
    bEnableOnlineSearch = false;
}

void AiController::Private::shutDown()
{
    stopTimer();
    for (auto *manager : {&requestManager, &downloadManager}) {
        if (*manager)
            retire(std::move(*manager), this);
    }
}

bool AiController::Private::canUseNetwork(const char *operation) const
{
    if (!requestManager)
        qCWarning(lcController) << "the controller has been cleared, nothing is done for" << operation;
    return requestManager != nullptr;
}

// The managers are nobody's children, so they do not follow when the controller moves to another thread. An object can
// be sent away from its own thread only, and the new thread is not known yet: they are left without one until this
// object has arrived there.
void AiController::Private::threadAboutToChange()
{
    for (auto *manager : {&requestManager, &downloadManager}) {
        if (*manager)
            (*manager)->moveToThread(nullptr);
    }
    post([this] { adoptManagers(); });
}

void AiController::Private::adoptManagers()
{
    for (auto *manager : {&requestManager, &downloadManager}) {
        if (*manager && !(*manager)->thread())
            (*manager)->moveToThread(thread());
    }
}

} // namespace tavro::aiassistant
