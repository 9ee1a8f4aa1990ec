#include "assistant.h"

namespace tavro::consolehost {

using namespace aiassistant;

Assistant::Assistant(const Options &options, const MediaLibrary &library)
{
    configure(options, library);
    connectOutcomes();
}

void Assistant::configure(const Options &options, const MediaLibrary &library)
{
    m_controller.setZVRuntime(&m_runtime);
    m_controller.setDomain(options.service);
    m_controller.setToken(options.token);
    m_controller.setUserId(options.userId);
    m_controller.setNode(options.node);
    m_controller.setTimeout(static_cast<int>(options.timeout.count()));
    m_controller.createTimer();
    m_controller.setSingleTickTime(static_cast<int>(options.tick.count()));
    m_controller.setMediaLibAllResources(library);
    if (options.deepModel)
        setDeepModel(true);
    if (options.onlineSearch)
        setOnlineSearch(true);
}

// The controller goes before this object does, so the connections need no end of their own.
void Assistant::connectOutcomes()
{
    m_controller.sigGenerateTextFinished.connect(&Assistant::onTextGenerated, this);
    m_controller.sigGeneratePictureFinished.connect(&Assistant::onPictureGenerated, this);
    m_controller.sigDownloadPictureFinished.connect(&Assistant::onPictureSaved, this);
    m_controller.sigAgentCmds.connect(&Assistant::onCommands, this);
    m_controller.sigRequestFailed.connect(&Assistant::onRequestFailed, this);
    m_controller.sigErrorOccured.connect(&Assistant::onErrorOccured, this);
    m_timeoutConnection = m_controller.sigRequestTimeout.connect(&Assistant::onTimeout, this);
}

void Assistant::ask(const QString &question)
{
    beginQuestion();
    m_controller.textToGenerateText(question);
}

void Assistant::askForPicture(const PictureGenerateInfo &info)
{
    beginQuestion();
    m_controller.textToGeneratePicture(info);
}

// The controller counts the ticks of its timer from one time-out to the next, over all questions between them.
// Declaring one now gives the coming question the whole time.
void Assistant::beginQuestion()
{
    const auto unheard = m_timeoutConnection.blocker();
    m_controller.requesetTimeout({});
}

void Assistant::stop()
{
    m_controller.toStopGenerate();
}

void Assistant::download(const QString &address)
{
    m_controller.toDownloadPicture(address);
}

void Assistant::beginConversation()
{
    m_controller.toClearHistoryRecord();
}

void Assistant::setDeepModel(bool active)
{
    m_controller.toActiveDeepSeekModel(active);
}

void Assistant::setOnlineSearch(bool active)
{
    m_controller.toActiveOnlineSearch(active);
}

void Assistant::shutDown()
{
    m_controller.clear();
}

void Assistant::onTextGenerated(const TextGeneratedPack &pack)
{
    Q_EMIT sigAnswered(QString::fromStdString(pack.answer));
}

void Assistant::onPictureGenerated(const QString & /*question*/, const PictureGenerateInfo & /*info*/,
                                   const AIImage &picture)
{
    Q_EMIT sigPictureReceived(picture);
}

void Assistant::onPictureSaved(const std::string &path)
{
    Q_EMIT sigPictureSaved(QString::fromStdString(path));
}

void Assistant::onCommands(std::vector<AgentCmd> &commands)
{
    Q_EMIT sigCommands(commands);
}

void Assistant::onRequestFailed(const ChatItemBasic & /*item*/)
{
    Q_EMIT sigFailed(QStringLiteral("the service cannot be reached, or its reply cannot be read"));
}

void Assistant::onErrorOccured(const ChatItemBasic &item)
{
    Q_EMIT sigFailed(QStringLiteral("the service reports: %1").arg(QString::fromStdString(item.message)));
}

void Assistant::onTimeout(const ChatItemBasic & /*item*/)
{
    Q_EMIT sigTimedOut();
}

} // namespace tavro::consolehost
