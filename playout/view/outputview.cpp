#include "view/outputview.h"

#include "model/medialibrary.h"
#include "model/playoutstate.h"
#include "view/hosttheme.h"
#include "view/layersource.h"
#include "view/pictureloader.h"

#include <QPainter>

namespace tavro::playout {

namespace {

constexpr QSize ratio{16, 9};

} // namespace

OutputView::OutputView(const PlayoutState &state, const MediaLibrary &library, PictureLoader &loader,
                       const HostTheme &theme)
    : m_state(state)
    , m_library(library)
    , m_loader(loader)
    , m_sources(static_cast<std::size_t>(state.size().layers))
    , m_theme(theme)
{
    setObjectName(QStringLiteral("outputView"));
    setAccessibleName(QStringLiteral("Picture of the output"));
    connect(&state, &PlayoutState::sigLayerChanged, this, &OutputView::refresh);
    connect(&state, &PlayoutState::sigProgramShown, this, &OutputView::refresh);
    connect(&state, &PlayoutState::sigOutputSelected, this, &OutputView::refresh);
}

OutputView::~OutputView() = default;

int OutputView::heightFor(int width)
{
    return width * ratio.height() / ratio.width();
}

QSize OutputView::sizeHint() const
{
    return {480, heightFor(480)};
}

void OutputView::refresh()
{
    for (int layer = 1; layer <= m_state.size().layers; ++layer)
        refreshLayer(layer);
    update();
}

void OutputView::refreshLayer(int layer)
{
    std::unique_ptr<LayerSource> &source = m_sources[static_cast<std::size_t>(layer - 1)];
    const Layer &shown = m_state.layer(m_state.selectedProgram(), layer);
    const MediaItem *const item = shown.playing ? m_library.find(shown.mediaId) : nullptr;
    if (!item) {
        source.reset();
        return;
    }
    if (source && source->mediaId() == item->id)
        return;
    source = std::make_unique<LayerSource>(*item, m_loader);
    connect(source.get(), &LayerSource::sigChanged, this, qOverload<>(&QWidget::update));
}

QRect OutputView::screen() const
{
    QRect screen(QPoint(), ratio.scaled(size(), Qt::KeepAspectRatio));
    screen.moveCenter(rect().center());
    return screen;
}

void OutputView::paintEvent(QPaintEvent * /*event*/)
{
    const QRect area = screen();
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.fillRect(area, Qt::black);
    bool isEmpty = true;
    for (const auto &source : m_sources) {
        const QPixmap picture = source ? source->picture() : QPixmap();
        isEmpty = isEmpty && !source;
        if (picture.isNull())
            continue;
        QRect target(QPoint(), picture.size().scaled(area.size(), Qt::KeepAspectRatio));
        target.moveCenter(area.center());
        painter.drawPixmap(target, picture);
    }
    painter.setPen(m_theme.color("Color_W70"));
    if (isEmpty)
        painter.drawText(area, Qt::AlignCenter, QStringLiteral("Nothing is playing"));
}

} // namespace tavro::playout
