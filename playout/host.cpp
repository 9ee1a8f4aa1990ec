#include "host.h"

#include "view/mainwindow.h"
#include "view/stagepanel.h"
#include "view/statusline.h"

#include <QApplication>
#include <QStandardPaths>
#include <QStyleFactory>

#include <utility>

namespace tavro::playout {

using aiassistant::AgentCmd;

namespace {

constexpr int fontSize = 14; // px, as in the panel's sheets

// Where the assistant saves pictures.
QString generatedFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/imageCathe");
}

void dressApplication(const HostTheme &theme)
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(theme.palette());
    QFont font = QApplication::font();
    font.setPixelSize(fontSize);
    QApplication::setFont(font);
}

} // namespace

Host::Host(const Options &options, PanelFactory panelFactory)
    : m_options(options)
    , m_executor(m_state, m_library)
    , m_theme(options.themeFile)
{
    dressApplication(m_theme);
    if (!options.mediaFolder.isEmpty())
        m_library.addFolder(options.mediaFolder);
    m_library.addGeneratedFolder(generatedFolder());
    m_media = std::make_unique<MediaListModel>(m_library, m_loader, qApp->devicePixelRatio());
    m_assistant = std::make_unique<Assistant>(options, m_library.resources());
    m_window = std::make_unique<MainWindow>(StageParts{m_state, m_library, *m_media, m_loader, m_theme},
                                            m_assistant->makePanel(panelFactory));
    m_window->setStyleSheet(m_theme.styleSheet());
    connectAssistant();
    connectWindow();
    m_window->statusLine().showRole(nameOf(options.role));
    showService(QStringLiteral("not asked yet"), true);
    m_assistant->start();
}

Host::~Host()
{
    m_assistant->shutDown();
    m_window.reset();
    m_assistant.reset();
}

void Host::connectAssistant()
{
    connect(m_assistant.get(), &Assistant::sigCommands, this, [this](const std::vector<AgentCmd> &commands) {
        for (const AgentCmd &command : commands)
            carryOut(command);
    });
    connect(m_assistant.get(), &Assistant::sigPictureSaved, &m_library, &MediaLibrary::addGenerated);
    connect(m_assistant.get(), &Assistant::sigServiceState, this, &Host::showService);
    connect(m_assistant.get(), &Assistant::sigConnection, this, &Host::showConnection);
    connect(m_assistant.get(), &Assistant::sigRemark, m_window.get(), &MainWindow::showRemark);
    connect(&m_library, &MediaLibrary::sigItemAdded, this, [this] { m_assistant->setLibrary(m_library.resources()); });
}

void Host::connectWindow()
{
    connect(m_window.get(), &MainWindow::sigMediaChosen, this, &Host::play);
    connect(m_window.get(), &MainWindow::sigPlayClicked, this,
            [this](int layer) { play(m_state.layer(m_state.selectedProgram(), layer).mediaId, layer); });
    connect(m_window.get(), &MainWindow::sigStopClicked, this, &Host::stop);
    connect(m_window.get(), &MainWindow::sigAssistantShown, m_assistant.get(), &Assistant::notifyPanelShown);
}

void Host::carryOut(const AgentCmd &command)
{
    const CommandResult result = m_executor.execute(command);
    m_window->showResult(result.text, result.done);
}

// The operator's own clicks take the way of the assistant's commands, with the same checks.
void Host::play(const QString &mediaId, int layer)
{
    AgentCmd command;
    command.cmdType = AgentCmd::LibraryMedia;
    command.bPlay = true;
    command.mediaId = mediaId.toStdString();
    command.layerId = layer;
    carryOut(command);
}

void Host::stop(int layer)
{
    AgentCmd command;
    command.cmdType = StopLayerCommand;
    command.layerId = layer;
    carryOut(command);
}

void Host::showService(const QString &state, bool isGood)
{
    const bool asksItself = m_options.role != Role::Client;
    m_window->statusLine().showService(asksItself ? m_options.service : QStringLiteral("Asked by the serving machine"),
                                       state, isGood);
}

// The status line has the present state, the log what went before.
void Host::showConnection(const QString &text, bool isGood)
{
    m_window->statusLine().showRuntime(text, isGood);
    const QString before = std::exchange(m_connection, text);
    if (!before.isEmpty() && before != text)
        m_window->showRemark(QStringLiteral("Runtime: %1").arg(text), isGood);
}

} // namespace tavro::playout
