#include "view/layertable.h"

#include "model/medialibrary.h"
#include "model/playoutstate.h"
#include "view/layerrow.h"
#include "view/medialistmodel.h"
#include "view/mediasizes.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QPushButton>

namespace tavro::playout {

namespace {

constexpr int widthForTwoColumns = 960;

int columnsFor(int width)
{
    return width >= widthForTwoColumns ? 2 : 1;
}

} // namespace

LayerTable::LayerTable(PlayoutState &state, const MediaLibrary &library, MediaListModel &media)
    : m_state(state)
    , m_library(library)
    , m_media(media)
    , m_grid(new QGridLayout(this))
    , m_targets(new QButtonGroup(this))
{
    setObjectName(QStringLiteral("layerTable"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_grid->setSizeConstraint(QLayout::SetNoConstraint);
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setSpacing(gridStep);
    for (int number = 1; number <= state.size().layers; ++number)
        addRow(number);
    place(1);
    setTargetLayer(1);
    connect(&state, &PlayoutState::sigLayerChanged, this, &LayerTable::refresh);
    connect(&state, &PlayoutState::sigProgramShown, this, &LayerTable::refresh);
    connect(&state, &PlayoutState::sigOutputSelected, this, &LayerTable::refresh);
    connect(&media, &MediaListModel::sigThumbnailReady, this, &LayerTable::refresh);
    refresh();
}

void LayerTable::addRow(int number)
{
    auto *const row = new LayerRow(number);
    m_targets->addButton(row->targetButton(), number);
    m_rows.push_back(row);
    connect(row, &LayerRow::sigPlayClicked, this, &LayerTable::sigPlayClicked);
    connect(row, &LayerRow::sigStopClicked, this, &LayerTable::sigStopClicked);
    connect(row, &LayerRow::sigVolumeMoved, this,
            [this](int layer, double volume) { m_state.setVolume(m_state.selectedProgram(), layer, volume); });
}

int LayerTable::heightFor(int width) const
{
    const int columns = columnsFor(width);
    const int rows = (static_cast<int>(m_rows.size()) + columns - 1) / columns;
    return rows * m_rows.front()->height() + (rows - 1) * gridStep;
}

QSize LayerTable::minimumSizeHint() const
{
    return {m_rows.front()->minimumSizeHint().width(), heightFor(width())};
}

int LayerTable::targetLayer() const
{
    return m_targets->checkedId();
}

void LayerTable::setTargetLayer(int layer)
{
    if (QAbstractButton *const button = m_targets->button(layer))
        button->setChecked(true);
}

void LayerTable::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    place(columnsFor(width()));
}

void LayerTable::place(int columns)
{
    if (m_columns == columns)
        return;
    m_columns = columns;
    int at = 0;
    for (LayerRow *const row : m_rows) {
        m_grid->addWidget(row, at / columns, at % columns);
        ++at;
    }
    updateGeometry();
}

void LayerTable::refresh()
{
    for (LayerRow *const row : m_rows)
        refreshRow(*row);
}

void LayerTable::refreshRow(LayerRow &row)
{
    const Layer &layer = m_state.layer(m_state.selectedProgram(), row.number());
    const MediaItem *const item = m_library.find(layer.mediaId);
    row.showLayer(layer, item ? item->name : QString(), item ? m_media.thumbnail(item->id) : QPixmap());
}

} // namespace tavro::playout
