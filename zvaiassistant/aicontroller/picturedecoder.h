#pragma once

#include "common/taskreceiver.h"

#include <QByteArray>
#include <QImage>
#include <QRunnable>
#include <QThreadPool>

#include <deque>
#include <functional>
#include <mutex>

namespace tavro::aiassistant {

/// Decodes pictures off the caller's thread: a large one takes far longer than a frame.
///
/// The results come back in the decoder's own thread, in the order in which the pictures were given.
class PictureDecoder : public TaskReceiver {
public:
    using Done = std::function<void(const QImage &picture)>;

    explicit PictureDecoder(QObject *parent = nullptr);

    /// Waits for the picture that is being decoded; what was not begun is dropped. No result comes any more.
    ~PictureDecoder() override;

    /// Decodes @p bytes, whose format is told from the data, and calls @p done with the picture, null where the bytes
    /// are none. Empty bytes are no picture and take their turn without any work; with no one ahead, @p done is called
    /// at once.
    void decode(const QByteArray &bytes, Done done);

private:
    struct Job {
        QByteArray bytes;
        Done done;
    };

    /// Run once for each job. The jobs go through a queue of our own, whose lock ThreadSanitizer can see.
    class Runner : public QRunnable {
    public:
        explicit Runner(PictureDecoder &owner);
        void run() override;

    private:
        PictureDecoder &m_owner;
    };

    Job takeJob();
    void decodeNext();
    void finish(const QImage &picture, const Done &done);

    Runner m_runner{*this};
    QThreadPool m_worker;
    std::mutex m_lock;
    std::deque<Job> m_jobs; ///< guarded by m_lock
    int m_waiting = 0; ///< jobs whose result has not come back
};

} // namespace tavro::aiassistant
