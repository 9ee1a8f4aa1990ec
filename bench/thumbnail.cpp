// The picture of a chat item painted again, beside its first paint, which scales the whole picture.

#include "widgets/pixmaplabel.h"

#include <benchmark/benchmark.h>

#include <QImage>
#include <QLabel>

namespace tavro::aiassistant {

namespace {

ChatItemContext pictureAnswer()
{
    AIImage image;
    image.pixmap = QPixmap(3840, 2160);
    image.pixmap.fill(Qt::darkCyan);
    ChatItemContext context;
    context.images.push_back(image);
    return context;
}

class Thumbnail {
public:
    Thumbnail()
        : m_row(pictureAnswer(), nullptr)
        , m_label(m_row.findChild<QLabel *>())
        , m_target(200, 200, QImage::Format_RGB32)
    {
        m_row.resize(m_row.sizeHint());
        m_row.show();
    }

    // A label forgets its scaled picture when its size changes.
    void forgetScaled()
    {
        const QSize size = m_label->size();
        m_label->resize(size + QSize(1, 1));
        m_label->render(&m_target);
        m_label->resize(size);
    }

    void paint() { m_label->render(&m_target); }

private:
    PixmapLabel m_row;
    QLabel *m_label;
    QImage m_target;
};

void firstPaint(benchmark::State &state)
{
    Thumbnail thumbnail;
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        thumbnail.forgetScaled();
        state.ResumeTiming();
        thumbnail.paint();
    }
}

void nextPaint(benchmark::State &state)
{
    Thumbnail thumbnail;
    thumbnail.paint();
    for ([[maybe_unused]] auto iteration : state)
        thumbnail.paint();
}

BENCHMARK(firstPaint)->UseRealTime()->Iterations(20);
BENCHMARK(nextPaint)->UseRealTime();

} // namespace

} // namespace tavro::aiassistant
