#include "view/medialistmodel.h"

#include "model/medialibrary.h"
#include "view/mediasizes.h"
#include "view/pictureloader.h"

namespace tavro::playout {

MediaListModel::MediaListModel(const MediaLibrary &library, PictureLoader &loader, qreal pixelRatio)
    : m_library(library)
    , m_loader(loader)
    , m_pixelRatio(pixelRatio)
    , m_count(static_cast<int>(library.items().size()))
{
    connect(&library, &MediaLibrary::sigItemsAdded, this, &MediaListModel::onItemsAdded);
    connect(&loader, &PictureLoader::sigLoaded, this, &MediaListModel::onLoaded);
}

int MediaListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_count;
}

QVariant MediaListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const MediaItem &item = m_library.items().at(static_cast<std::size_t>(index.row()));
    switch (role) {
    case Qt::DisplayRole:
        return item.name;
    case Qt::AccessibleTextRole:
    case Qt::ToolTipRole:
        return toolTip(index.row());
    case Qt::DecorationRole:
        return thumbnail(item.id);
    case IdRole:
        return item.id;
    case GeneratedRole:
        return item.generated;
    case AnimationRole:
        return item.kind == MediaItem::Kind::Animation;
    default:
        return {};
    }
}

QString MediaListModel::toolTip(int row) const
{
    const MediaItem &item = m_library.items().at(static_cast<std::size_t>(row));
    if (item.generated)
        return QStringLiteral("%1, generated picture").arg(item.name);
    return item.kind == MediaItem::Kind::Animation ? QStringLiteral("%1, animation").arg(item.name)
                                                   : QStringLiteral("%1, picture").arg(item.name);
}

QPixmap MediaListModel::thumbnail(const QString &mediaId) const
{
    const MediaItem *const item = m_library.find(mediaId);
    if (!item)
        return {};
    const auto known = m_thumbnails.constFind(item->path);
    if (known != m_thumbnails.constEnd())
        return *known;
    m_thumbnails.insert(item->path, {});
    m_loader.load(item->path, thumbnailSize * m_pixelRatio);
    return {};
}

void MediaListModel::onItemsAdded()
{
    const int count = static_cast<int>(m_library.items().size());
    beginInsertRows({}, m_count, count - 1);
    m_count = count;
    endInsertRows();
}

void MediaListModel::onLoaded(const QString &path, const QSize &bounds, const QImage &image)
{
    if (bounds != thumbnailSize * m_pixelRatio || image.isNull())
        return;
    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(m_pixelRatio);
    m_thumbnails.insert(path, pixmap);
    for (int row = 0; row < m_count; ++row) {
        const MediaItem &item = m_library.items().at(static_cast<std::size_t>(row));
        if (item.path != path)
            continue;
        Q_EMIT dataChanged(index(row), index(row), {Qt::DecorationRole});
        Q_EMIT sigThumbnailReady(item.id);
    }
}

} // namespace tavro::playout
