#include "support/fakedispatcher.h"

#include <utility>

namespace tavro::testsupport {

FakeDispatcher::FakeDispatcher()
{
    m_thread = std::thread([this] { work(); });
}

FakeDispatcher::~FakeDispatcher()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void FakeDispatcher::setMode(Mode mode)
{
    const std::lock_guard lock(m_mutex);
    m_mode = mode;
}

int FakeDispatcher::postCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_posted;
}

int FakeDispatcher::runCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_ran;
}

void FakeDispatcher::post(std::function<void()> task)
{
    std::unique_lock lock(m_mutex);
    ++m_posted;
    const Mode mode = m_mode;
    m_ran += mode == Mode::Inline ? 1 : 0;
    lock.unlock();
    if (mode == Mode::Inline)
        task();
    else if (mode != Mode::Drop)
        enqueue(std::move(task), mode == Mode::OwnThread);
}

void FakeDispatcher::enqueue(std::function<void()> task, bool isToRun)
{
    {
        const std::lock_guard lock(m_mutex);
        m_entries.push_back({std::move(task), isToRun});
    }
    m_changed.notify_all();
}

void FakeDispatcher::work()
{
    Entry entry;
    while (take(entry)) {
        if (entry.isToRun)
            entry.task();
        entry = {};
    }
}

bool FakeDispatcher::take(Entry &entry)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_ending || !m_entries.empty(); });
    if (m_entries.empty())
        return false;
    entry = std::move(m_entries.front());
    m_entries.pop_front();
    m_ran += entry.isToRun ? 1 : 0;
    return true;
}

} // namespace tavro::testsupport
