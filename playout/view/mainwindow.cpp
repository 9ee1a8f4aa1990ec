#include "view/mainwindow.h"

#include "log/logbook.h"
#include "model/playoutstate.h"
#include "view/hosttheme.h"
#include "view/layertable.h"
#include "view/librarypanel.h"
#include "view/logview.h"
#include "view/mainmenu.h"
#include "view/mediasizes.h"
#include "view/stagepanel.h"
#include "view/statusline.h"

#include <QAction>
#include <QDockWidget>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>

namespace tavro::playout {

namespace {

constexpr QSize standardSize{1600, 900};
constexpr int titleButtonHeight = 24;

QWidget *makeDockTitle(QDockWidget *dock)
{
    auto *const title = new QFrame;
    title->setObjectName(QStringLiteral("dockTitle"));
    auto *const text = new QLabel(dock->windowTitle());
    text->setObjectName(QStringLiteral("dockTitleText"));
    auto *const hide = new QPushButton(QStringLiteral("Hide"));
    hide->setObjectName(QStringLiteral("dockHide"));
    hide->setFixedHeight(titleButtonHeight);
    hide->setToolTip(QStringLiteral("Hides the assistant (F9)"));
    hide->setAccessibleName(QStringLiteral("Hide the assistant"));
    QObject::connect(hide, &QPushButton::clicked, dock, &QWidget::hide);
    auto *const line = new QHBoxLayout(title);
    // A dock asks its title for its hint, which a fixed height would not change.
    line->setContentsMargins(2 * gridStep, gridStep, 2 * gridStep, gridStep);
    line->addWidget(text);
    line->addStretch();
    line->addWidget(hide);
    return title;
}

} // namespace

MainWindow::MainWindow(const StageParts &parts, QWidget *panel)
    : m_book(parts.log)
    , m_menu(new MainMenu(panel != nullptr))
    , m_status(new StatusLine)
{
    setObjectName(QStringLiteral("playout"));
    setWindowTitle(QStringLiteral("Playout"));
    setMenuBar(m_menu);
    buildMiddle(parts);
    if (panel)
        buildDock(panel);
    statusBar()->setSizeGripEnabled(false);
    statusBar()->setContentsMargins(0, 0, 0, 0);
    statusBar()->addWidget(m_status, 1);
    resize(standardSize);
    connectMenu();
    addShortcuts();
    if (panel)
        panel->setFocus();
    else
        m_library->focusSearch();
}

void MainWindow::buildMiddle(const StageParts &parts)
{
    m_library = new LibraryPanel(parts.media, parts.theme);
    m_stage = new StagePanel(parts);
    auto *const middle = new QWidget;
    middle->setObjectName(QStringLiteral("middle"));
    auto *const row = new QHBoxLayout(middle);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_library);
    row->addWidget(m_stage, 1);
    setCentralWidget(middle);
    connect(m_library, &LibraryPanel::sigChosen, this,
            [this](const QString &mediaId) { Q_EMIT sigMediaChosen(mediaId, m_stage->layers().targetLayer()); });
    connect(&m_stage->layers(), &LayerTable::sigPlayClicked, this, &MainWindow::sigPlayClicked);
    connect(&m_stage->layers(), &LayerTable::sigStopClicked, this, &MainWindow::sigStopClicked);
}

void MainWindow::buildDock(QWidget *panel)
{
    m_dock = new QDockWidget(QStringLiteral("Assistant"), this);
    m_dock->setObjectName(QStringLiteral("assistantDock"));
    m_dock->setFeatures(QDockWidget::DockWidgetClosable);
    m_dock->setAllowedAreas(Qt::RightDockWidgetArea);
    m_dock->setTitleBarWidget(makeDockTitle(m_dock));
    m_dock->setWidget(panel);
    addDockWidget(Qt::RightDockWidgetArea, m_dock);
    m_status->assistantButton().show();
    showAssistantState(true);
    connect(&m_status->assistantButton(), &QPushButton::clicked, this, &MainWindow::setAssistantShown);
    // The dock still tells when the window is no more than a widget, so the window itself must not be asked.
    connect(m_dock, &QDockWidget::visibilityChanged, &m_status->assistantButton(), &QPushButton::setChecked);
    connect(m_dock, &QDockWidget::visibilityChanged, &m_menu->assistant(), &QAction::setChecked);
}

void MainWindow::connectMenu()
{
    connect(&m_menu->settings(), &QAction::triggered, this, &MainWindow::sigSettingsWanted);
    connect(&m_menu->quit(), &QAction::triggered, this, &QWidget::close);
    connect(&m_menu->search(), &QAction::triggered, m_library, &LibraryPanel::focusSearch);
    connect(&m_menu->log(), &QAction::triggered, this, &MainWindow::setLogShown);
    connect(&m_menu->assistant(), &QAction::triggered, this, &MainWindow::setAssistantShown);
    connect(&m_menu->resetLayout(), &QAction::triggered, this, &MainWindow::resetLayout);
}

void MainWindow::addShortcuts()
{
    for (int layer = 1; layer <= 9; ++layer) {
        auto *const keys = new QShortcut(Qt::CTRL + Qt::Key_0 + layer, this);
        connect(keys, &QShortcut::activated, this, [this, layer] { m_stage->layers().setTargetLayer(layer); });
    }
}

bool MainWindow::isAssistantShown() const
{
    return m_dock && !m_dock->isHidden();
}

void MainWindow::setAssistantShown(bool shown)
{
    if (!m_dock)
        return;
    const bool comesBack = shown && m_dock->isHidden();
    m_dock->setVisible(shown);
    if (shown)
        m_dock->widget()->setFocus(Qt::ShortcutFocusReason);
    if (comesBack)
        Q_EMIT sigAssistantShown();
}

// Before the window is shown, the dock tells nothing.
void MainWindow::showAssistantState(bool shown)
{
    m_status->assistantButton().setChecked(m_dock && shown);
    m_menu->assistant().setChecked(m_dock && shown);
}

bool MainWindow::isLogShown() const
{
    return !m_stage->log().isHidden();
}

void MainWindow::setLogShown(bool shown)
{
    m_stage->log().setVisible(shown);
    m_menu->log().setChecked(shown);
}

WindowLayout MainWindow::windowLayout() const
{
    return {normalGeometry(), isMaximized(), isAssistantShown(), isLogShown(), m_stage->logHeight()};
}

void MainWindow::setWindowLayout(const WindowLayout &layout)
{
    if (!layout.geometry.isNull())
        setGeometry(layout.geometry);
    else if (isMaximized())
        showNormal();
    if (layout.isMaximized)
        setWindowState(windowState() | Qt::WindowMaximized);
    if (m_dock)
        m_dock->setVisible(layout.isAssistantShown);
    showAssistantState(layout.isAssistantShown);
    setLogShown(layout.isLogShown);
    m_stage->setLogHeight(layout.logHeight);
}

void MainWindow::resetLayout()
{
    setWindowLayout({});
    resize(standardSize);
}

void MainWindow::refreshTheme(const QString &styleSheet)
{
    setStyleSheet(styleSheet);
    m_stage->log().refresh();
}

void MainWindow::showResult(const QString &text, bool isDone)
{
    const QString line = isDone ? text : QStringLiteral("Refused: ") + text;
    showRemark(line, isDone);
    m_status->showCommand(line, isDone);
}

void MainWindow::showRemark(const QString &text, bool isGood)
{
    m_book.add(isGood ? LogLevel::Info : LogLevel::Warning, text);
}

} // namespace tavro::playout
