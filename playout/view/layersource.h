#pragma once

#include "model/mediaitem.h"

#include <QMovie>
#include <QObject>
#include <QPixmap>

namespace tavro::playout {

class PictureLoader;

/// The picture of a playing layer: a still one, or an animation that runs for ever.
class LayerSource : public QObject {
    Q_OBJECT

public:
    /// The loader must outlive the source.
    LayerSource(const MediaItem &item, PictureLoader &loader);

    const QString &mediaId() const { return m_item.id; }

    /// What is to be shown now; null as long as it is not read, or where it cannot be read.
    QPixmap picture() const;

Q_SIGNALS:
    void sigChanged();

private:
    void startMovie();
    void readPicture(PictureLoader &loader);

    const MediaItem m_item;
    QMovie m_movie;
    QPixmap m_picture;
};

} // namespace tavro::playout
