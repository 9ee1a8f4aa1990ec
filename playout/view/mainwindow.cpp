#include "view/mainwindow.h"

#include "model/playoutstate.h"
#include "view/hosttheme.h"
#include "view/layertable.h"
#include "view/librarypanel.h"
#include "view/logview.h"
#include "view/mediasizes.h"
#include "view/stagepanel.h"
#include "view/statusline.h"

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
    : m_status(new StatusLine)
{
    setObjectName(QStringLiteral("playout"));
    setWindowTitle(QStringLiteral("Playout"));
    buildMiddle(parts);
    if (panel)
        buildDock(panel);
    statusBar()->setSizeGripEnabled(false);
    statusBar()->setContentsMargins(0, 0, 0, 0);
    statusBar()->addWidget(m_status, 1);
    resize(standardSize);
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
    m_status->assistantButton().setChecked(true);
    m_status->assistantButton().show();
    connect(&m_status->assistantButton(), &QPushButton::clicked, this, &MainWindow::setAssistantShown);
    connect(m_dock, &QDockWidget::visibilityChanged, &m_status->assistantButton(), &QPushButton::setChecked);
}

void MainWindow::addShortcuts()
{
    const auto add = [this](const QKeySequence &keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    add(Qt::Key_F9, [this] { setAssistantShown(!isAssistantShown()); });
    add(Qt::CTRL + Qt::Key_F, [this] { m_library->focusSearch(); });
    for (int layer = 1; layer <= 9; ++layer)
        add(Qt::CTRL + Qt::Key_0 + layer, [this, layer] { m_stage->layers().setTargetLayer(layer); });
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

void MainWindow::showResult(const QString &text, bool isDone)
{
    if (isDone)
        m_stage->log().addDone(text);
    else
        m_stage->log().addRefused(text);
    m_status->showCommand(isDone ? text : QStringLiteral("Refused: ") + text, isDone);
}

void MainWindow::showRemark(const QString &text, bool isGood)
{
    m_stage->log().addRemark(text, isGood);
}

} // namespace tavro::playout
