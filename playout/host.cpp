#include "host.h"

#include "settings/settingswriter.h"
#include "view/mainwindow.h"
#include "view/settingsdialog.h"
#include "view/stagepanel.h"
#include "view/statusline.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QScreen>
#include <QStandardPaths>
#include <QStyleFactory>

#include <utility>

namespace tavro::playout {

using aiassistant::AgentCmd;

namespace {

Q_LOGGING_CATEGORY(lcHost, "playout")

constexpr int fontSize = 14; // px, as in the panel's sheets

// Where the assistant saves pictures.
QString generatedFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/imageCathe");
}

void dressApplication()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
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
    dressApplication();
    QApplication::setPalette(m_theme.palette());
    if (!options.mediaFolder.isEmpty())
        m_mediaFolder = std::make_unique<MediaFolder>(m_library, options.mediaFolder);
    m_library.addGeneratedFolder(generatedFolder());
    m_media = std::make_unique<MediaListModel>(m_library, m_loader, qApp->devicePixelRatio());
    m_assistant = std::make_unique<Assistant>(options, m_library.resources());
    m_window = std::make_unique<MainWindow>(StageParts{m_state, m_library, *m_media, m_loader, m_theme, m_log},
                                            m_assistant->makePanel(panelFactory));
    m_window->setStyleSheet(m_theme.styleSheet());
    connectAssistant();
    connectWindow();
    m_window->statusLine().showRole(nameOf(options.role));
    refreshService();
    restoreLayout();
    m_assistant->start();
}

Host::~Host()
{
    keepLayout();
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
    connect(&m_library, &MediaLibrary::sigItemsAdded, this, [this] { m_assistant->setLibrary(m_library.resources()); });
}

void Host::connectWindow()
{
    connect(m_window.get(), &MainWindow::sigMediaChosen, this, &Host::play);
    connect(m_window.get(), &MainWindow::sigPlayClicked, this,
            [this](int layer) { play(m_state.layer(m_state.selectedProgram(), layer).mediaId, layer); });
    connect(m_window.get(), &MainWindow::sigStopClicked, this, &Host::stop);
    connect(m_window.get(), &MainWindow::sigAssistantShown, m_assistant.get(), &Assistant::notifyPanelShown);
    connect(m_window.get(), &MainWindow::sigSettingsWanted, this, &Host::showSettings);
    connect(&m_log, &LogBook::sigAdded, this, &Host::showTrouble);
}

void Host::restoreLayout()
{
    const auto layout = m_options.layoutFile.isEmpty() ? std::nullopt : readLayout(m_options.layoutFile);
    QVector<QRect> screens;
    const QList<QScreen *> all = QGuiApplication::screens();
    for (const QScreen *const screen : all)
        screens.append(screen->availableGeometry());
    if (layout && isInReach(*layout, screens))
        m_window->setWindowLayout(*layout);
}

void Host::keepLayout() const
{
    if (m_options.layoutFile.isEmpty())
        return;
    WindowLayout layout = m_window->windowLayout();
    // Without an assistant there is nothing to hide; on another day the machine may have one.
    if (m_options.role == Role::Server)
        layout.isAssistantShown = true;
    if (!writeLayout(m_options.layoutFile, layout))
        qCWarning(lcHost) << "the window's layout cannot be kept in" << m_options.layoutFile;
}

void Host::showSettings()
{
    if (!m_settings) {
        const auto change = [this](const Options &edited) { return changeSettings(edited); };
        m_settings = new SettingsDialog(m_options, m_assistant->languages(), change, m_window.get());
        m_settings->setAttribute(Qt::WA_DeleteOnClose);
        // It is there for a moment longer.
        connect(m_settings, &QDialog::finished, this, [this] { m_settings.clear(); });
    }
    m_settings->show();
    m_settings->raise();
    m_settings->activateWindow();
}

QString Host::changeSettings(const Options &edited)
{
    const QString problem = saveSettings(m_options, edited);
    if (!problem.isEmpty())
        return problem;
    const Options before = std::exchange(m_options, edited);
    if (before.themeFile != m_options.themeFile)
        dress();
    m_assistant->change(before, m_options);
    refreshService();
    if (before.mediaFolder != m_options.mediaFolder)
        m_window->showRemark(QStringLiteral("The media folder takes effect when playout is started again."), true);
    return {};
}

void Host::dress()
{
    m_theme.load(m_options.themeFile);
    QApplication::setPalette(m_theme.palette());
    m_window->refreshTheme(m_theme.styleSheet());
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
    m_serviceState = state;
    m_isServiceGood = isGood;
    refreshService();
}

void Host::refreshService()
{
    const bool asksItself = m_options.role != Role::Client;
    m_window->statusLine().showService(asksItself ? m_options.service : QStringLiteral("Asked by the serving machine"),
                                       m_serviceState, m_isServiceGood);
}

// The module has no other way to tell that a picture which the operator wanted was not saved.
void Host::showTrouble(const LogRecord &record)
{
    if (record.place == QLatin1String("zvaiassistant.pictures") && record.level >= LogLevel::Warning)
        m_window->statusLine().showCommand(record.text, false);
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
