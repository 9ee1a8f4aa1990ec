#include "view/stagepanel.h"

#include "view/logview.h"
#include "view/mediasizes.h"
#include "view/outputpanel.h"

#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

namespace tavro::playout {

namespace {

constexpr int margin = 2 * gridStep;

} // namespace

StagePanel::StagePanel(const StageParts &parts)
    : m_output(new OutputPanel(parts))
    , m_log(new LogView(parts.log, parts.theme))
    , m_splitter(new QSplitter(Qt::Vertical))
{
    setObjectName(QStringLiteral("stage"));
    m_splitter->setObjectName(QStringLiteral("stageSplitter"));
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setHandleWidth(gridStep);
    m_splitter->addWidget(m_output);
    m_splitter->addWidget(m_log);
    m_splitter->handle(1)->setToolTip(QStringLiteral("Drag to give the log more or less room"));
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, gridStep);
    column->addWidget(m_splitter);
    connect(m_splitter, &QSplitter::splitterMoved, this, &StagePanel::onHandleMoved);
}

LayerTable &StagePanel::layers()
{
    return m_output->layers();
}

void StagePanel::setLogHeight(int height)
{
    m_logHeight = std::max(0, height);
    share();
}

void StagePanel::onHandleMoved()
{
    m_logHeight = m_log->height();
}

// The log gets what the picture at its full width leaves, unless the operator wants it otherwise.
void StagePanel::share()
{
    const int room = m_splitter->height() - m_splitter->handleWidth();
    const int wanted = m_logHeight > 0 ? m_logHeight : room - m_output->heightFor(m_splitter->width());
    const int log = std::max(m_log->minimumHeight(), wanted);
    m_splitter->setSizes({room - log, log});
}

void StagePanel::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    share();
}

} // namespace tavro::playout
