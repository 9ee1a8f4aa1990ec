#include "aicontroller/decodequeue.h"

#include "aicontroller/rasterpicture.h"
#include "common/taskreceiver.h"

#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

namespace tavro::aiassistant {

namespace {

// A decoder notices soon that it is abandoned, and a thread that is over is one less at the end of the program.
constexpr std::chrono::milliseconds endLimit{100};

} // namespace

DecodeQueue::DecodeQueue(TaskReceiver &receiver)
    : m_receiver(&receiver)
{ }

void DecodeQueue::add(const QByteArray &bytes, Done done)
{
    const std::lock_guard lock(m_lock);
    m_jobs.push_back({bytes, std::move(done)});
    if (!m_isWorking)
        beginThread();
}

void DecodeQueue::abandon()
{
    m_isAbandoned = true;
    std::unique_lock lock(m_lock);
    m_receiver = nullptr;
    m_jobs.clear();
    m_idle.wait_for(lock, endLimit, [this] { return !m_isWorking; });
}

// Without a thread there is no picture.
void DecodeQueue::beginThread()
{
    try {
        std::thread([self = shared_from_this()] { self->work(); }).detach();
        m_isWorking = true;
    } catch (const std::system_error &) {
        for (const Job &job : std::exchange(m_jobs, {}))
            m_receiver->post([done = job.done] { done({}); });
    }
}

void DecodeQueue::work()
{
    Job job;
    while (takeJob(job))
        deliver(decodeRaster(job.bytes, m_isAbandoned), job.done);
}

bool DecodeQueue::takeJob(Job &job)
{
    const std::lock_guard lock(m_lock);
    m_isWorking = !m_jobs.empty();
    if (!m_isWorking) {
        m_idle.notify_all();
        return false;
    }
    job = std::move(m_jobs.front());
    m_jobs.pop_front();
    return true;
}

void DecodeQueue::deliver(const QImage &picture, const Done &done)
{
    const std::lock_guard lock(m_lock);
    if (m_receiver)
        m_receiver->post([picture, done] { done(picture); });
}

} // namespace tavro::aiassistant
