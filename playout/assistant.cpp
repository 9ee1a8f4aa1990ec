#include "assistant.h"

#include "translate/translatemanager.h"
#include "zvtranslate/zvtranslate.h"

namespace tavro::playout {

using namespace aiassistant;

Assistant::Assistant(const Options &options, const MediaLibrary::Resources &library)
    : m_language(options.language)
{
    connectSignals();
    configure(options, library);
}

// The host's slots come before the panel's, whose connections are made later. The controller goes before this object
// does, so the connections need no end of their own.
void Assistant::connectSignals()
{
    m_controller.sigThemeChanged.connect(&Assistant::onThemeChanged, this);
    m_controller.sigAgentCmds.connect(&Assistant::onCommands, this);
    m_controller.sigDownloadPictureFinished.connect(&Assistant::onPictureSaved, this);
    m_controller.sigGenerateTextFinished.connect(&Assistant::onTextGenerated, this);
    m_controller.sigGeneratePictureFinished.connect(&Assistant::onPictureGenerated, this);
    m_controller.sigRequestFailed.connect(&Assistant::onRequestFailed, this);
    m_controller.sigErrorOccured.connect(&Assistant::onErrorOccured, this);
    m_controller.sigRequestTimeout.connect(&Assistant::onTimeout, this);
}

void Assistant::configure(const Options &options, const MediaLibrary::Resources &library)
{
    m_controller.setZVRuntime(&m_runtime);
    m_controller.setDomain(options.service);
    m_controller.setToken(options.token);
    m_controller.setUserId(options.userId);
    m_controller.setNode(options.node);
    m_controller.setTimeout(static_cast<int>(options.timeout.count()));
    m_controller.createTimer();
    m_controller.setSingleTickTime(static_cast<int>(options.tick.count()));
    m_controller.loadTheme(options.themeFile.toLatin1().toStdString());
    m_controller.switchLanguage(options.language.toStdString());
    m_controller.setMediaLibAllResources(library);
}

QWidget *Assistant::makePanel(PanelFactory factory)
{
    // The theme was loaded before there was a panel to hear of it.
    return factory(m_controller, m_styleSheet);
}

// The panel loads the language files. A language without texts would leave its buttons empty.
void Assistant::checkLanguage()
{
    if (TranslateManager::instance().translator().hasTexts())
        return;
    Q_EMIT sigRemark(
        QStringLiteral("The assistant does not know the language \"%1\" and speaks English.").arg(m_language));
    m_controller.switchLanguage("en");
}

void Assistant::setLibrary(const MediaLibrary::Resources &library)
{
    m_controller.setMediaLibAllResources(library);
}

void Assistant::shutDown()
{
    m_controller.clear();
}

// The controller counts the ticks of its timer from one time-out to the next, over all questions between them.
// Declaring one now, which nobody hears, gives the next question the whole time.
void Assistant::renewTime()
{
    m_controller.sigRequestTimeout.block();
    m_controller.requesetTimeout({});
    m_controller.sigRequestTimeout.unblock();
}

void Assistant::onThemeChanged(const QString &sheet)
{
    m_styleSheet = sheet;
}

void Assistant::onCommands(std::vector<AgentCmd> &commands)
{
    Q_EMIT sigCommands(commands);
}

void Assistant::onPictureSaved(const std::string &path)
{
    Q_EMIT sigPictureSaved(QString::fromStdString(path));
}

void Assistant::onTextGenerated(const TextGeneratedPack & /*pack*/)
{
    renewTime();
    Q_EMIT sigServiceState(QStringLiteral("answering"), true);
}

void Assistant::onPictureGenerated(const QString & /*question*/, const PictureGenerateInfo & /*info*/,
                                   const AIImage &image)
{
    renewTime();
    const bool hasPicture = !image.pixmap.isNull();
    Q_EMIT sigServiceState(hasPicture ? QStringLiteral("answering") : QStringLiteral("picture not found"), hasPicture);
}

void Assistant::onRequestFailed(const ChatItemBasic & /*item*/)
{
    renewTime();
    Q_EMIT sigServiceState(QStringLiteral("not reachable"), false);
}

void Assistant::onErrorOccured(const ChatItemBasic & /*item*/)
{
    renewTime();
    Q_EMIT sigServiceState(QStringLiteral("reports an error"), false);
}

void Assistant::onTimeout(const ChatItemBasic & /*item*/)
{
    Q_EMIT sigServiceState(QStringLiteral("too slow"), false);
}

} // namespace tavro::playout
