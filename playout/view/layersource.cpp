#include "view/layersource.h"

#include "view/pictureloader.h"

namespace tavro::playout {

namespace {

constexpr QSize largestPicture{1920, 1080};

} // namespace

LayerSource::LayerSource(const MediaItem &item, PictureLoader &loader)
    : m_item(item)
{
    if (item.kind == MediaItem::Kind::Picture)
        readPicture(loader);
    else
        startMovie();
}

void LayerSource::startMovie()
{
    m_movie.setFileName(m_item.path);
    connect(&m_movie, &QMovie::frameChanged, this, &LayerSource::sigChanged);
    m_movie.start();
}

void LayerSource::readPicture(PictureLoader &loader)
{
    connect(&loader, &PictureLoader::sigLoaded, this,
            [this](const QString &path, const QSize &bounds, const QImage &image) {
                if (path != m_item.path || bounds != largestPicture)
                    return;
                m_picture = QPixmap::fromImage(image);
                Q_EMIT sigChanged();
            });
    loader.load(m_item.path, largestPicture);
}

QPixmap LayerSource::picture() const
{
    return m_item.kind == MediaItem::Kind::Animation ? m_movie.currentPixmap() : m_picture;
}

} // namespace tavro::playout
