#include "aicontroller/picturedecoder.h"

#include <QBuffer>
#include <QImageReader>
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

PictureDecoder::Runner::Runner(PictureDecoder &owner)
    : m_owner(owner)
{
    setAutoDelete(false);
}

void PictureDecoder::Runner::run()
{
    m_owner.decodeNext();
}

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
    // The worker is at its end, but ThreadSanitizer sees only locks: what it handed over goes with this object.
    const std::lock_guard lock(m_lock);
}

void PictureDecoder::decode(const QByteArray &bytes, Done done)
{
    if (bytes.isEmpty() && m_waiting == 0) {
        done({});
        return;
    }
    ++m_waiting;
    {
        const std::lock_guard lock(m_lock);
        m_jobs.push_back({bytes, std::move(done)});
    }
    m_worker.start(&m_runner);
}

PictureDecoder::Job PictureDecoder::takeJob()
{
    const std::lock_guard lock(m_lock);
    Job job = std::move(m_jobs.front());
    m_jobs.pop_front();
    return job;
}

void PictureDecoder::decodeNext()
{
    Job job = takeJob();
    QImage picture = decodePicture(std::move(job.bytes));
    const std::lock_guard lock(m_lock);
    post([this, picture = std::move(picture), done = std::move(job.done)] { finish(picture, done); });
}

void PictureDecoder::finish(const QImage &picture, const Done &done)
{
    --m_waiting;
    done(picture);
}

} // namespace tavro::aiassistant
