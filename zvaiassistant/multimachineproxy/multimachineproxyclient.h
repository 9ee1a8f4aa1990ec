#pragma once

#include "aicontroller/proxyports.h"

#include <QObject>

#include <memory>

namespace tavro::aiassistant {

/// A client machine's end: sends the panel's operations to the serving machine, and hands that machine's completions to
/// the controller, on the thread on which the runtime calls.
///
/// Runtime and controller must outlive it. Sending is possible from any thread. What is lost on the way has no
/// completion.
class MultimachineProxyClient : public QObject, public ProxyClientPort {
    Q_OBJECT

public:
    MultimachineProxyClient(AiController *controller, IZVRuntime *runtime);
    ~MultimachineProxyClient() override;

    void generateText(const QString &question) override;
    void generateImage(const PictureGenerateInfo &info) override;
    void downloadPicture(const QString &url) override;
    void stopGenerate() override;
    void activeDeepseek(bool active) override;
    void activeOnlineSearch(bool active) override;
    void clearCathe() override;
    void clearHistoryRecord() override;
    void updateHeader(const std::vector<std::string> &info) override;
    void clearHeader() override;
    void aiWidgetShow() override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace tavro::aiassistant
