#pragma once

#include "zvruntime/izvruntime.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace tavro::testsupport {

/// The way to a host's thread, in the variants that a test needs. May be used from any thread.
class FakeDispatcher : public IZVDispatcher {
public:
    enum class Mode {
        OwnThread, ///< on a thread that stands for the host's (the default)
        Inline, ///< inside post()
        Drop, ///< never: the task is destroyed inside post()
        DropLater, ///< never: the task is destroyed on the own thread
    };

    FakeDispatcher();
    ~FakeDispatcher() override;

    void setMode(Mode mode);
    std::thread::id thread() const { return m_thread.get_id(); }
    int postCount() const;
    int runCount() const;

    void post(std::function<void()> task) override;

private:
    struct Entry {
        std::function<void()> task;
        bool isToRun;
    };

    void work();
    bool take(Entry &entry);
    void enqueue(std::function<void()> task, bool isToRun);

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Entry> m_entries;
    Mode m_mode = Mode::OwnThread;
    int m_posted = 0;
    int m_ran = 0;
    bool m_ending = false;
    std::thread m_thread;
};

} // namespace tavro::testsupport
