#include "view/pictureloader.h"

#include <QImageReader>

#include <utility>

namespace tavro::playout {

namespace {

constexpr int threads = 2;

template <typename Item>
Item takeFirst(std::deque<Item> &row)
{
    Item first = std::move(row.front());
    row.pop_front();
    return first;
}

QImage readPicture(const QString &path, const QSize &bounds)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isValid() && (size.width() > bounds.width() || size.height() > bounds.height()))
        reader.setScaledSize(size.scaled(bounds, Qt::KeepAspectRatio).expandedTo({1, 1}));
    return reader.read();
}

} // namespace

PictureLoader::PictureLoader()
{
    m_threads.setMaxThreadCount(threads);
}

PictureLoader::~PictureLoader()
{
    m_threads.clear();
    m_threads.waitForDone();
}

void PictureLoader::load(const QString &path, const QSize &bounds)
{
    {
        const std::lock_guard lock(m_mutex);
        m_wanted.push_back({path, bounds, {}});
    }
    m_threads.start([this] { readNext(); });
}

void PictureLoader::readNext()
{
    std::unique_lock lock(m_mutex);
    Picture picture = takeFirst(m_wanted);
    lock.unlock();
    picture.image = readPicture(picture.path, picture.bounds);
    lock.lock();
    m_read.push_back(std::move(picture));
    lock.unlock();
    QMetaObject::invokeMethod(this, &PictureLoader::deliverNext, Qt::QueuedConnection);
}

void PictureLoader::deliverNext()
{
    std::unique_lock lock(m_mutex);
    const Picture picture = takeFirst(m_read);
    lock.unlock();
    Q_EMIT sigLoaded(picture.path, picture.bounds, picture.image);
}

} // namespace tavro::playout
