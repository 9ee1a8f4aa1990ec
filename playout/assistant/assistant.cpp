#include "assistant/assistant.h"

#include "assistant/callpayload.h"
#include "translate/translatemanager.h"
#include "zvtranslate/zvtranslate.h"

namespace tavro::playout {

using namespace aiassistant;

namespace {

// The serving machine tells a time-out one interval after its time, and its word is to come first.
std::chrono::seconds outcomeLimit(const Options &options)
{
    return options.timeout + 2 * options.tick + std::chrono::seconds(5);
}

} // namespace

Assistant::Assistant(const Options &options, const MediaLibrary::Resources &library)
    : m_machines(options)
    , m_language(options.language)
{
    makeControllers(options, library);
    connectLink();
}

Assistant::~Assistant() = default;

void Assistant::makeControllers(const Options &options, const MediaLibrary::Resources &library)
{
    if (m_machines.serving()) {
        m_serving = std::make_unique<AiController>();
        startServing(options, library);
    }
    if (m_machines.serving() == m_machines.showing())
        m_showingToo = m_serving.get();
    else if (m_machines.showing())
        m_showing = std::make_unique<AiController>();
    if (showing())
        startShowing(options);
    if (m_showing)
        followQuestions(options);
}

void Assistant::startServing(const Options &options, const MediaLibrary::Resources &library)
{
    m_serving->sigAgentCmds.connect(&Assistant::onCommands, this);
    m_serving->setZVRuntime(m_machines.serving());
    setService(options);
    m_serving->createTimer();
    m_serving->setSingleTickTime(static_cast<int>(options.tick.count()));
    m_serving->setMediaLibAllResources(library);
    m_upkeep = std::make_unique<Upkeep>(*m_serving, *m_machines.serving());
}

void Assistant::setService(const Options &options)
{
    m_serving->setDomain(options.service);
    m_serving->setToken(options.token);
    m_serving->setUserId(options.userId);
    m_serving->setNode(options.node);
    m_serving->setTimeout(static_cast<int>(options.timeout.count()));
}

void Assistant::startShowing(const Options &options)
{
    connectShowing(*showing());
    showing()->setZVRuntime(m_machines.showing());
    showing()->loadTheme(options.themeFile.toLatin1().toStdString());
    showing()->switchLanguage(options.language.toStdString());
}

// The host's slots come before the panel's, whose connections are made later. The controller goes before this object
// does, so the connections need no end of their own.
void Assistant::connectShowing(AiController &controller)
{
    controller.sigThemeChanged.connect(&Assistant::onThemeChanged, this);
    controller.sigDownloadPictureFinished.connect(&Assistant::onPictureSaved, this);
    controller.sigGenerateTextFinished.connect(&Assistant::onTextGenerated, this);
    controller.sigGeneratePictureFinished.connect(&Assistant::onPictureGenerated, this);
    controller.sigRequestFailed.connect(&Assistant::onRequestFailed, this);
    controller.sigErrorOccured.connect(&Assistant::onErrorOccured, this);
    controller.sigRequestTimeout.connect(&Assistant::onTimeout, this);
}

void Assistant::followQuestions(const Options &options)
{
    m_watch = std::make_unique<QuestionWatch>(*m_machines.showing(), *m_machines.link(), outcomeLimit(options));
    connect(m_watch.get(), &QuestionWatch::sigGivenUp, this, &Assistant::onQuestionGivenUp);
}

void Assistant::connectLink()
{
    connect(&m_machines, &Machines::sigConnection, this, &Assistant::sigConnection);
    if (m_machines.link())
        connect(m_machines.link(), &runtime::MachineRuntime::sigMessageLost, this, &Assistant::onMessageLost);
    if (showing())
        return;
    // Nothing is announced on a machine that only serves; what it sends tells the same.
    connect(m_machines.serving(), &WatchedRuntime::sigSent, this, &Assistant::onOutcomeSent);
    m_serving->sigAiNotify.connect(
        [this] { Q_EMIT sigRemark(QStringLiteral("The assistant was opened on a client machine."), true); });
}

QWidget *Assistant::makePanel(PanelFactory factory)
{
    // The theme was loaded before there was a panel to hear of it.
    return showing() ? factory(*showing(), m_styleSheet) : nullptr;
}

void Assistant::start()
{
    if (showing())
        checkLanguage();
    if (showing() && !serving())
        Q_EMIT sigRemark(QStringLiteral("Commands are carried out on the serving machine."), true);
    m_machines.report();
}

// The panel loads the language files. A language without texts would leave its buttons empty.
void Assistant::checkLanguage()
{
    if (TranslateManager::instance().translator().hasTexts())
        return;
    Q_EMIT sigRemark(
        QStringLiteral("The assistant does not know the language \"%1\" and speaks English.").arg(m_language), false);
    showing()->switchLanguage("en");
}

void Assistant::change(const Options &before, const Options &after)
{
    if (serving())
        setService(after);
    if (serving() && before.tick != after.tick)
        serving()->setSingleTickTime(static_cast<int>(after.tick.count()));
    if (m_watch && outcomeLimit(before) != outcomeLimit(after))
        m_watch->setLimit(outcomeLimit(after));
    if (showing() && before.themeFile != after.themeFile)
        showing()->loadTheme(after.themeFile.toLatin1().toStdString());
    if (showing() && before.language != after.language) {
        m_language = after.language;
        showing()->switchLanguage(after.language.toStdString());
        checkLanguage();
    }
}

QStringList Assistant::languages() const
{
    return showing() ? TranslateManager::instance().translator().languages() : QStringList();
}

void Assistant::setLibrary(const MediaLibrary::Resources &library)
{
    if (serving())
        serving()->setMediaLibAllResources(library);
}

void Assistant::notifyPanelShown()
{
    if (showing())
        showing()->notifyAiWidgetShow();
}

void Assistant::shutDown()
{
    for (AiController *const controller : {m_showing.get(), m_serving.get()}) {
        if (controller)
            controller->clear();
    }
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
    Q_EMIT sigServiceState(QStringLiteral("answering"), true);
}

void Assistant::onPictureGenerated(const QString & /*question*/, const PictureGenerateInfo & /*info*/,
                                   const AIImage &image)
{
    const bool hasPicture = !image.pixmap.isNull();
    Q_EMIT sigServiceState(hasPicture ? QStringLiteral("answering") : QStringLiteral("picture not found"), hasPicture);
}

void Assistant::onRequestFailed(const ChatItemBasic & /*item*/)
{
    Q_EMIT sigServiceState(QStringLiteral("not reachable"), false);
}

void Assistant::onErrorOccured(const ChatItemBasic & /*item*/)
{
    Q_EMIT sigServiceState(QStringLiteral("reports an error"), false);
}

void Assistant::onTimeout(const ChatItemBasic & /*item*/)
{
    Q_EMIT sigServiceState(QStringLiteral("too slow"), false);
}

void Assistant::onOutcomeSent(const QByteArray &name)
{
    if (name == "GenerateTextFinished" || name == "GenerateImageFinished")
        Q_EMIT sigServiceState(QStringLiteral("answering"), true);
    else if (name == "RequestFailed")
        onRequestFailed({});
    else if (name == "ErrorOccured")
        onErrorOccured({});
    else if (name == "RequestTimeout")
        onTimeout({});
}

void Assistant::onQuestionGivenUp(const ChatItemBasic &question)
{
    showing()->errorOccuredFinished(question);
    Q_EMIT sigServiceState(QStringLiteral("no answer"), false);
}

// A question has its answer in the panel.
void Assistant::onMessageLost(const QString &name, const QString &reason)
{
    // A question is given up by its watch. Without a name it is a trouble that concerns no message in particular.
    if (!isQuestion(name.toLatin1()))
        Q_EMIT sigRemark(name.isEmpty() ? reason : QStringLiteral("\"%1\" was not sent: %2").arg(name, reason), false);
}

} // namespace tavro::playout
