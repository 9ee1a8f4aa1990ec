#pragma once

#include <QByteArray>
#include <QImage>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace tavro::aiassistant {

class TaskReceiver;

/// The pictures that wait to be decoded, and the thread that decodes one after the other: there is one while pictures
/// wait. Shared with that thread, which nobody has to wait for.
class DecodeQueue : public std::enable_shared_from_this<DecodeQueue> {
public:
    using Done = std::function<void(const QImage &picture)>;

    /// Results come in the thread of @p receiver.
    explicit DecodeQueue(TaskReceiver &receiver);

    void add(const QByteArray &bytes, Done done);

    /// Gives up what is under way. Nothing is delivered any more, the receiver may go.
    void abandon();

private:
    struct Job {
        QByteArray bytes;
        Done done;
    };

    void beginThread();
    void work();
    bool takeJob(Job &job);
    void deliver(const QImage &picture, const Done &done);

    std::atomic<bool> m_isAbandoned{false};
    std::mutex m_lock;
    std::condition_variable m_idle;
    TaskReceiver *m_receiver; ///< this and what follows guarded by m_lock; null: abandoned
    std::deque<Job> m_jobs;
    bool m_isWorking = false; ///< there is a thread
};

} // namespace tavro::aiassistant
