#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QPixmap>

namespace tavro::playout {

class MediaLibrary;
class PictureLoader;

/// The media library for a view: name, id, mark and thumbnail of each item. Thumbnails are read when they are first
/// asked for.
class MediaListModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { IdRole = Qt::UserRole + 1, GeneratedRole, AnimationRole };

    /// @p pixelRatio: the screen's, so that thumbnails are sharp. Library and loader must outlive the model.
    MediaListModel(const MediaLibrary &library, PictureLoader &loader, qreal pixelRatio);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    /// The thumbnail of the item; null until it is read.
    QPixmap thumbnail(const QString &mediaId) const;

Q_SIGNALS:
    void sigThumbnailReady(const QString &mediaId);

private:
    void onItemsAdded();
    void onLoaded(const QString &path, const QSize &bounds, const QImage &image);
    QString toolTip(int row) const;

    const MediaLibrary &m_library;
    PictureLoader &m_loader;
    const qreal m_pixelRatio;
    int m_count = 0;
    // By path; a null one is being read, or could not be.
    mutable QHash<QString, QPixmap> m_thumbnails;
};

} // namespace tavro::playout
