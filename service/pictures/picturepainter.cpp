#include "pictures/picturepainter.h"

#include "pictures/logo.h"
#include "pictures/stylenames.h"
#include "pictures/styles.h"

#include <QBuffer>
#include <QImageWriter>

namespace tavro::assistantservice {

namespace {

void paintStyle(Style style, Canvas &canvas)
{
    static constexpr void (*painters[])(Canvas &) = {&paintPlain,   &paintPortrait,  &paintInk,    &paintWatercolor,
                                                     &paintFlat,    &paintLandscape, &paintPrint,  &paintMonet,
                                                     &paintPicasso, &paintRembrandt, &paintMatisse};
    painters[static_cast<size_t>(style)](canvas);
}

// Refuses to be written once nobody wants the file any more: that is the only way to make the encoder give up.
class CancellableBuffer : public QBuffer {
public:
    CancellableBuffer(QByteArray *bytes, const std::atomic<bool> &cancelled)
        : QBuffer(bytes)
        , m_cancelled(cancelled)
    { }

protected:
    qint64 writeData(const char *data, qint64 length) override
    {
        return m_cancelled ? -1 : QBuffer::writeData(data, length);
    }

private:
    const std::atomic<bool> &m_cancelled;
};

} // namespace

QImage paintPicture(const PictureRequest &request, const std::atomic<bool> &cancelled)
{
    QImage image(request.size, QImage::Format_RGB32);
    if (image.isNull()) {
        return image;
    }
    // Smooth edges mix with what is beneath: fresh memory would show through between two shapes.
    image.fill(Qt::white);
    const double scale = image.height() / Scene::height;
    const Style style = styleNamed(request.style);
    const Scene scene = composeScene(subjectOf(request.prompt), image.width() / scale);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    Canvas canvas{painter, scene, Random(scene.subject.seed + static_cast<quint64>(style)), cancelled};
    paintStyle(style, canvas);
    painter.end();
    stampLogo(image, request);
    return image;
}

void stampLogo(QImage &image, const PictureRequest &request)
{
    if (!request.logoEnabled) {
        return;
    }
    const double scale = image.height() / Scene::height;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    paintLogo(painter, image.width() / scale, request.logoPosition, request.logoOpacity);
}

// The lightest compression that zlib has: a large picture is ready seconds earlier and only some percent longer.
QByteArray encodePng(const QImage &image, const std::atomic<bool> &cancelled)
{
    QByteArray bytes;
    CancellableBuffer buffer(&bytes, cancelled);
    QImageWriter writer(&buffer, "png");
    constexpr int levelOne = 85;
    writer.setQuality(levelOne);
    return writer.write(image) ? bytes : QByteArray();
}

} // namespace tavro::assistantservice
