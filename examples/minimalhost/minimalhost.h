#pragma once

#include "aicontroller/aicontroller.h"
#include "widgets/mainwidget.h"
#include "zvruntime/izvruntime.h"

#include <QThread>

#include <memory>

/// The way to the thread that makes it.
class HostDispatcher : public QObject, public tavro::IZVDispatcher {
public:
    void post(std::function<void()> task) override
    {
        QMetaObject::invokeMethod(this, std::move(task), Qt::QueuedConnection);
    }
};

/// A machine on its own: it does everything itself and has nobody to send to.
class HostRuntime : public tavro::IZVRuntime {
public:
    void registerCallHandler(const char * /*name*/, CallHandler /*handler*/) override { }
    void unregisterCallHandler(const char * /*name*/) override { }
    void sendToServer(const char * /*name*/, const char * /*data*/, unsigned int /*size*/) override { }
    void sendToClients(const char * /*name*/, const char * /*data*/, unsigned int /*size*/) override { }
    bool isProxyServer() const override { return false; }
    bool isProxyClient() const override { return false; }
    bool isLocalExecutor() const override { return true; }
    tavro::IZVDispatcher &dispatcher() override { return m_dispatcher; }
    bool needsDispatch(const char * /*file*/, int /*line*/) const override
    {
        return QThread::currentThread() != m_dispatcher.thread();
    }

private:
    HostDispatcher m_dispatcher;
};

/// The smallest host with the panel: it plays nothing, and prints what it is asked to play.
class MinimalHost {
public:
    explicit MinimalHost(const QString &service, int timeoutSeconds = 60)
    {
        using namespace tavro::aiassistant;
        m_controller.setZVRuntime(&m_runtime);
        m_controller.setDomain(service);
        m_controller.updateHeaderInfo({"token", "operator", "studio 1"});
        m_controller.setTimeout(timeoutSeconds);
        m_controller.createTimer();
        m_controller.setSingleTickTime(1);
        m_controller.setMediaLibAllResources({{"clip-1", "harbour clip"}, {"clip-2", "night market"}});
        m_controller.sigAgentCmds.connect([](std::vector<AgentCmd> &commands) {
            for (const AgentCmd &command : commands)
                qInfo("play %s on layer %d at volume %g", command.mediaId.c_str(), command.layerId, command.volume);
        });
        m_controller.sigDownloadPictureFinished.connect(
            [](const std::string &path) { qInfo("saved %s", path.c_str()); });
        m_controller.sigGenerateTextFinished.connect([this](const auto &) { renewTime(); });
        m_controller.sigGeneratePictureFinished.connect([this](const auto &...) { renewTime(); });
        m_controller.sigErrorOccured.connect([this](const auto &) { renewTime(); });
        m_controller.sigRequestFailed.connect([this](const auto &) {
            m_controller.stopGenerate();
            renewTime();
        });
        m_controller.sigRequestTimeout.connect([this](const auto &) { m_controller.stopGenerate(); });

        m_panel = std::make_unique<MainWidget>();
        m_panel->setAIController(&m_controller);
        m_controller.loadTheme(":/aiassistant/theme/default_aiassistant.theme");
        m_controller.switchLanguage("en");
    }

    ~MinimalHost()
    {
        m_controller.clear();
        m_panel.reset();
    }

    QWidget &panel() { return *m_panel; }

private:
    // Polls are counted from one time-out to the next, over all questions between them. A time-out that nobody hears
    // gives the next question the whole time.
    void renewTime()
    {
        m_controller.sigRequestTimeout.block();
        m_controller.requesetTimeout({});
        m_controller.sigRequestTimeout.unblock();
    }

    // In the order in which they are made; they go in the opposite one.
    HostRuntime m_runtime;
    tavro::aiassistant::AiController m_controller;
    std::unique_ptr<tavro::aiassistant::MainWidget> m_panel;
};
