#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QThreadPool>

#include <deque>
#include <mutex>

namespace tavro::playout {

/// Reads pictures on other threads, so that large ones do not hold the window up.
class PictureLoader : public QObject {
    Q_OBJECT

public:
    PictureLoader();
    ~PictureLoader() override; ///< waits for the pictures that are being read

    /// Reads the file at @p path (of an animation the first frame), made to fit into @p bounds where it is larger.
    void load(const QString &path, const QSize &bounds);

Q_SIGNALS:
    /// What load() was asked for; the image is null where the file cannot be read.
    void sigLoaded(const QString &path, const QSize &bounds, const QImage &image);

private:
    struct Picture {
        QString path;
        QSize bounds;
        QImage image;
    };

    void readNext(); // on a thread of the pool
    void deliverNext();

    std::mutex m_mutex; // over both rows
    std::deque<Picture> m_wanted;
    std::deque<Picture> m_read;
    QThreadPool m_threads;
};

} // namespace tavro::playout
