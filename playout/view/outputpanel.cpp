#include "view/outputpanel.h"

#include "model/playoutstate.h"
#include "view/layertable.h"
#include "view/mediasizes.h"
#include "view/outputview.h"
#include "view/stagepanel.h"

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
constexpr int spacing = 2 * gridStep;
constexpr int smallestPicture = 9 * gridStep;
constexpr int besideBoth = headerHeight + 2 * spacing + gridStep; // picture and layers

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

OutputPanel::OutputPanel(const StageParts &parts)
    : m_state(parts.state)
    , m_outputs(new QButtonGroup(this))
    , m_view(new OutputView(parts.state, parts.library, parts.loader, parts.theme))
    , m_layers(new LayerTable(parts.state, parts.library, parts.media))
{
    setObjectName(QStringLiteral("output"));
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, gridStep);
    column->setSpacing(spacing);
    column->addLayout(buildHeader());
    column->addWidget(m_view);
    column->addWidget(m_layers);
    column->addStretch(1);
    connect(m_outputs, &QButtonGroup::idClicked, &m_state, &PlayoutState::selectOutput);
    connect(m_program, qOverload<int>(&QComboBox::activated), this,
            [this](int entry) { m_state.showProgram(m_state.selectedOutput(), entry + 1); });
    connect(&m_state, &PlayoutState::sigOutputSelected, this, &OutputPanel::showSelection);
    connect(&m_state, &PlayoutState::sigProgramShown, this, &OutputPanel::showSelection);
    showSelection();
}

QHBoxLayout *OutputPanel::buildHeader()
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

void OutputPanel::showSelection()
{
    m_outputs->button(m_state.selectedOutput())->setChecked(true);
    m_program->setCurrentIndex(m_state.selectedProgram() - 1);
}

int OutputPanel::heightFor(int width) const
{
    return besideBoth + m_layers->heightFor(width) + OutputView::heightFor(width);
}

// The picture's present height is no reason to refuse a smaller one.
QSize OutputPanel::minimumSizeHint() const
{
    return {QWidget::minimumSizeHint().width(), besideBoth + m_layers->heightFor(width()) + smallestPicture};
}

// The picture is as high as its width asks for, as long as the layers have their room.
void OutputPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const int left = height() - besideBoth - m_layers->heightFor(width());
    m_view->setFixedHeight(std::max(smallestPicture, std::min(OutputView::heightFor(width()), left)));
}

} // namespace tavro::playout
