#pragma once

#include "aicontroller/proxyports.h"

#include <QObject>

#include <memory>

namespace tavro::aiassistant {

/// The serving machine's end: has the controller carry out what client machines ask for, on the thread on which the
/// runtime calls, and sends the controller's completions to all of them.
///
/// Runtime and controller must outlive it. Sending is possible from any thread.
class MultimachineProxyServer : public QObject, public ProxyServerPort {
    Q_OBJECT

public:
    MultimachineProxyServer(AiController *controller, IZVRuntime *runtime);
    ~MultimachineProxyServer() override;

    void generateTextFinished(const TextGeneratedPack &pack) override;
    void generateImageFinished(const PicturedGeneratedPack &pack) override;
    void downloadPictureFinished(const QString &url) override;
    void stopGenerateFinished() override;
    void deleteGeneratingItem() override;
    void activeDeepseekFinished(bool active) override;
    void activeOnlineSearchFinished(bool active) override;
    void clearCatheFinished() override;
    void clearHistoryRecordFinished() override;
    void clearHeaderFinished() override;
    void requestFailed(const ChatItemBasic &basic) override;
    void errorOccured(const ChatItemBasic &basic) override;
    void requestTimeout(const ChatItemBasic &basic) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace tavro::aiassistant
