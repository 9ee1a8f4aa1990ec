#pragma once

#include "aicontroller/aicontroller.h"
#include "aicontroller/boundednetwork.h"
#include "aicontroller/picturedecoder.h"
#include "aicontroller/proxyports.h"
#include "common/taskreceiver.h"

#include <QByteArray>
#include <QJsonArray>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tavro::aiassistant {

class Theme;
struct ResultReply;

/// The controller's work and its state. All of it belongs to the object's thread, but for the runtime and the proxies,
/// which any thread may ask for.
class AiController::Private : public TaskReceiver {
    Q_OBJECT

public:
    using Resources = std::vector<std::pair<std::string, std::string>>;

    explicit Private(AiController *owner);
    ~Private() override;

    /// Stands in every slot that a reply calls, for as long as it runs.
    class ReplySlot {
    public:
        explicit ReplySlot(Private *owner);
        ~ReplySlot();

        ReplySlot(const ReplySlot &) = delete;
        ReplySlot &operator=(const ReplySlot &) = delete;

    private:
        QPointer<Private> m_owner;
    };

    // Roles of this machine. Without a runtime it is a single one that does everything itself.
    bool isProxyServer() const;
    bool isProxyClient() const;
    bool isLocalExecutor() const;

    void setRuntime(IZVRuntime *host);

    /// The proxy to send @p call with; null where this machine does not have the role. Also null, with a warning, where
    /// it took the role on only after the runtime was given: proxies are made then.
    ProxyClientPort *client(const char *call) const;
    ProxyServerPort *server(const char *call) const;

    // Configuration.
    void setHeader(const QByteArray &name, const QString &value);
    void setResources(const Resources &resources);
    void setTickSeconds(int seconds);
    void beginNewConversation();
    void resetConversation();
    void stopGenerate();
    void shutDown();

    // Requests.
    bool canUseNetwork(const char *operation) const;
    QNetworkReply *postToService(const QString &endpoint, const QByteArray &body);
    QJsonArray hostMediaList();
    void startTimer();
    void stopTimer();

    // Replies and polling.
    BoundedReply *finishedReply() const;
    ChatItemBasic currentItem(const QString &message = {}) const;
    void dropStopped();
    void dealActiveQuery();
    void queryResult(const QString &reqId, bool pictureMode);
    void deliver(const ResultReply &result);
    bool deliverPicture(const QString &url, const QString &description);
    void deliverText(const QString &answer);

    // Pictures and commands.
    void queryImageData(const PicturedGeneratedPack &pack);
    void announcePicture(const PicturedGeneratedPack &pack, const QImage &picture);
    void announceUnreachablePicture(const PicturedGeneratedPack &pack, int error);
    void completeCommands(const QString &path);
    void announceCommands();

    AiController *const controller;
    std::atomic<IZVRuntime *> runtime{nullptr};
    std::atomic<ProxyClientPort *> proxyClient{nullptr};
    std::atomic<ProxyServerPort *> proxyServer{nullptr};
    QJsonArray historyArray;
    QNetworkRequest resultRequest; ///< carries the headers of all requests to the service
    std::unique_ptr<BoundedNetwork> requestManager; ///< null after clear()
    std::unique_ptr<BoundedNetwork> downloadManager; ///< null after clear()
    QString domain;
    QTimer *pQueryTimer = nullptr;
    int nTickCount = 0;
    int nTimeoutMs = 60000;
    QString strPrompt;
    PictureGenerateInfo pictureInfo;
    QString strReqId; ///< of the accepted request; empty: nothing to ask for
    QString strLastPictureUrl;
    QString strDescription;
    bool bQuerying = false;
    bool bPictureMode = true;
    bool bStopGenerate = false;
    bool bEnableDeepModel = false;
    bool bEnableOnlineSearch = false;
    PicturedGeneratedPack pendingImagePack; ///< its picture is being fetched; url empty: none is
    QPointer<QNetworkReply> textReply;
    Resources mediaResources;
    QJsonArray mediaArray; ///< made of mediaResources when first needed
    bool bMediaArrayMade = false;
    std::vector<AgentCmd> agentCmdList;
    bool bPlayAfterDownload = false;
    unsigned nPosts = 0; ///< questions posted so far
    int nReplySlots = 0; ///< slots called by a reply that are running
    PictureDecoder decoder;
    std::vector<std::shared_ptr<Theme>> themes;

    // A runtime keeps the handlers of every proxy that was made for it, so they stay as long as the controller. What a
    // client is told, a server may have to tell on: the clients go first.
    std::vector<std::unique_ptr<ProxyServerPort>> proxyServers;
    std::vector<std::unique_ptr<ProxyClientPort>> proxyClients;

public Q_SLOTS:
    void slotRequestFinished();
    void networkError(QNetworkReply::NetworkError error);
    void slotQueryFinished();
    void slotQueryImageDataFinished();
    void slotDownloadImageFinished();
    void slotDownloadPicture(const QString &strNetUrl);
    void slotOnTimeout();
    void analyseAgentCmds(const QJsonArray &agentCmds);
    QJsonArray mediaListArray();
    void initTimer();

public:
    Q_INVOKABLE void onGenerateText(const QString &bGeranateText);
    Q_INVOKABLE void onGeneratePicture(const PictureGenerateInfo &info);

protected:
    void threadAboutToChange() override;

private:
    void adoptManagers();
};

/// Gives the private part to the proxies and to tests.
struct AiControllerAccess {
    static AiController::Private &of(AiController &controller) { return *controller.d; }
};

} // namespace tavro::aiassistant
