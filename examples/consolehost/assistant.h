#pragma once

#include "aicontroller/aicontroller.h"
#include "inprocess/inprocessruntime.h"
#include "mediafolder.h"
#include "options.h"

#include <QObject>

#include <string>
#include <vector>

namespace tavro::consolehost {

/// The assistant's controller as this host sets it up, with its outcomes as Qt signals. Everything happens on the
/// thread that makes it.
class Assistant : public QObject {
    Q_OBJECT

public:
    Assistant(const Options &options, const MediaLibrary &library);

    void ask(const QString &question);
    void askForPicture(const aiassistant::PictureGenerateInfo &info);

    /// Gives up the answer that is awaited; nothing is announced for it any more.
    void stop();

    /// Saves the picture at @p address, which is announced by sigPictureSaved. A failure is not announced.
    void download(const QString &address);

    void beginConversation();
    void setDeepModel(bool active);
    void setOnlineSearch(bool active);

    /// Ends all network activity, for good.
    void shutDown();

Q_SIGNALS:
    void sigAnswered(const QString &answer);
    void sigPictureReceived(const tavro::aiassistant::AIImage &picture); ///< null where it could not be fetched
    void sigPictureSaved(const QString &path);
    void sigCommands(const std::vector<tavro::aiassistant::AgentCmd> &commands);
    void sigFailed(const QString &why);
    void sigTimedOut();

private:
    void configure(const Options &options, const MediaLibrary &library);
    void connectOutcomes();
    void beginQuestion();

    void onTextGenerated(const aiassistant::TextGeneratedPack &pack);
    void onPictureGenerated(const QString &question, const aiassistant::PictureGenerateInfo &info,
                            const aiassistant::AIImage &picture);
    void onPictureSaved(const std::string &path);
    void onCommands(std::vector<aiassistant::AgentCmd> &commands);
    void onRequestFailed(const aiassistant::ChatItemBasic &item);
    void onErrorOccured(const aiassistant::ChatItemBasic &item);
    void onTimeout(const aiassistant::ChatItemBasic &item);

    // The controller uses the runtime to its end, so it stands behind it and goes before it.
    runtime::InProcessBus m_bus;
    runtime::InProcessRuntime m_runtime{m_bus, runtime::Role::LocalExecutor};
    aiassistant::AiController m_controller;
    sigslot::connection m_timeoutConnection;
};

} // namespace tavro::consolehost
