#include "aicontroller/picturedecoder.h"

#include <QBuffer>
#include <QImageReader>
#include <QRunnable>
#include <QSize>

#include <utility>

namespace tavro::aiassistant {

namespace {

// A few bytes can announce a picture that would take all memory. The largest one that the service makes has 33 million
// pixels.
constexpr qint64 maxPixels = 134'217'728;

bool isTooLarge(const QSize &size)
{
    return qint64{size.width()} * size.height() > maxPixels;
}

QImage decodePicture(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    if (isTooLarge(reader.size()))
        return {};
    QImage picture = reader.read();
    // The formats of which a pixmap is made without a further copy on the thread that needs it.
    picture.convertTo(picture.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return picture;
}

} // namespace

PictureDecoder::PictureDecoder(QObject *parent)
    : TaskReceiver(parent)
{
    // One thread keeps the order.
    m_worker.setMaxThreadCount(1);
}

PictureDecoder::~PictureDecoder()
{
    m_worker.clear();
    m_worker.waitForDone();
}

void PictureDecoder::decode(const QByteArray &bytes, Done done)
{
    if (bytes.isEmpty() && m_waiting == 0) {
        done({});
        return;
    }
    ++m_waiting;
    m_worker.start([this, bytes, done = std::move(done)] {
        post([this, picture = decodePicture(bytes), done] { finish(picture, done); });
    });
}

void PictureDecoder::finish(const QImage &picture, const Done &done)
{
    --m_waiting;
    done(picture);
}

} // namespace tavro::aiassistant
