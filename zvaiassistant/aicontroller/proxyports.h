#pragma once

#include "aicontroller/chatrecords.h"

#include <memory>
#include <string>
#include <vector>

class QString;

namespace tavro {
class IZVRuntime;
}

namespace tavro::aiassistant {

class AiController;

/// What a client machine asks of the serving machine: one operation for each call.
class ProxyClientPort {
public:
    virtual ~ProxyClientPort() = default;

    virtual void generateText(const QString &question) = 0;
    virtual void generateImage(const PictureGenerateInfo &info) = 0;
    virtual void downloadPicture(const QString &url) = 0;
    virtual void stopGenerate() = 0;
    virtual void activeDeepseek(bool active) = 0;
    virtual void activeOnlineSearch(bool active) = 0;
    virtual void clearCathe() = 0;
    virtual void clearHistoryRecord() = 0;
    virtual void updateHeader(const std::vector<std::string> &info) = 0;
    virtual void clearHeader() = 0;
    virtual void aiWidgetShow() = 0;
};

/// What the serving machine tells its clients: one operation for each completion.
class ProxyServerPort {
public:
    virtual ~ProxyServerPort() = default;

    virtual void generateTextFinished(const TextGeneratedPack &pack) = 0;
    virtual void generateImageFinished(const PicturedGeneratedPack &pack) = 0;
    virtual void downloadPictureFinished(const QString &url) = 0;
    virtual void stopGenerateFinished() = 0;
    virtual void deleteGeneratingItem() = 0;
    virtual void activeDeepseekFinished(bool active) = 0;
    virtual void activeOnlineSearchFinished(bool active) = 0;
    virtual void clearCatheFinished() = 0;
    virtual void clearHistoryRecordFinished() = 0;
    virtual void clearHeaderFinished() = 0;
    virtual void requestFailed(const ChatItemBasic &basic) = 0;
    virtual void errorOccured(const ChatItemBasic &basic) = 0;
    virtual void requestTimeout(const ChatItemBasic &basic) = 0;
};

/// Makes the proxy for a role. It is connected to the runtime from then on and until it is destroyed.
std::unique_ptr<ProxyClientPort> makeProxyClient(AiController &controller, IZVRuntime &runtime);
std::unique_ptr<ProxyServerPort> makeProxyServer(AiController &controller, IZVRuntime &runtime);

} // namespace tavro::aiassistant
