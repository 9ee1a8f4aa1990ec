#include "view/stagepanel.h"

#include "model/playoutstate.h"
#include "view/layertable.h"
#include "view/logview.h"
#include "view/mediasizes.h"
#include "view/outputview.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tavro::playout {

namespace {

constexpr int headerHeight = 32;
constexpr int margin = 2 * gridStep;
constexpr int spacing = 2 * gridStep;

QPushButton *makeOutputButton(int output)
{
    auto *const button = new QPushButton(QStringLiteral("Output %1").arg(output));
    button->setObjectName(QStringLiteral("output%1").arg(output));
    button->setProperty("part", QStringLiteral("output"));
    button->setCheckable(true);
    button->setFixedHeight(headerHeight);
    return button;
}

QComboBox *makeProgramChooser(int programs)
{
    auto *const chooser = new QComboBox;
    chooser->setObjectName(QStringLiteral("programChooser"));
    chooser->setAccessibleName(QStringLiteral("Program on this output"));
    chooser->setToolTip(QStringLiteral("Program on this output"));
    chooser->setFixedHeight(headerHeight);
    for (int program = 1; program <= programs; ++program)
        chooser->addItem(QStringLiteral("Program %1").arg(program));
    return chooser;
}

} // namespace

StagePanel::StagePanel(const StageParts &parts)
    : m_state(parts.state)
    , m_outputs(new QButtonGroup(this))
    , m_view(new OutputView(parts.state, parts.library, parts.loader, parts.theme))
    , m_layers(new LayerTable(parts.state, parts.library, parts.media))
    , m_log(new LogView(parts.theme))
{
    setObjectName(QStringLiteral("stage"));
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, gridStep);
    column->setSpacing(spacing);
    column->addLayout(buildHeader());
    column->addWidget(m_view);
    column->addWidget(m_layers);
    column->addWidget(m_log, 1);
    connect(m_outputs, &QButtonGroup::idClicked, &m_state, &PlayoutState::selectOutput);
    connect(m_program, qOverload<int>(&QComboBox::activated), this,
            [this](int entry) { m_state.showProgram(m_state.selectedOutput(), entry + 1); });
    connect(&m_state, &PlayoutState::sigOutputSelected, this, &StagePanel::showSelection);
    connect(&m_state, &PlayoutState::sigProgramShown, this, &StagePanel::showSelection);
    showSelection();
}

QHBoxLayout *StagePanel::buildHeader()
{
    auto *const header = new QHBoxLayout;
    header->setSpacing(gridStep);
    for (int output = 1; output <= m_state.size().outputs; ++output) {
        QPushButton *const button = makeOutputButton(output);
        m_outputs->addButton(button, output);
        header->addWidget(button);
    }
    m_program = makeProgramChooser(m_state.size().programs);
    auto *const shows = new QLabel(QStringLiteral("shows"));
    shows->setProperty("part", QStringLiteral("quiet"));
    header->addStretch();
    header->addWidget(shows);
    header->addWidget(m_program);
    return header;
}

void StagePanel::showSelection()
{
    m_outputs->button(m_state.selectedOutput())->setChecked(true);
    m_program->setCurrentIndex(m_state.selectedProgram() - 1);
}

// The picture is as high as its width asks for, as long as layers and log have their room.
void StagePanel::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    const int inner = width() - 2 * margin;
    const int others =
        margin + gridStep + headerHeight + 3 * spacing + m_layers->heightFor(inner) + m_log->minimumHeight();
    m_view->setFixedHeight(
        std::max(OutputView::heightFor(16 * gridStep), std::min(OutputView::heightFor(inner), height() - others)));
}

} // namespace tavro::playout
