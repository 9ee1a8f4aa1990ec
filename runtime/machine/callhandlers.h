#pragma once

#include "zvruntime/izvruntime.h"

#include <condition_variable>
#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tavro::runtime {

/// A message as it travels between threads.
struct Message {
    std::string name;
    std::string payload;
};

/// @p data may be null where @p size is 0.
Message makeMessage(const char *name, const char *data, std::size_t size);

/// The handlers of a runtime by name. May be used from any thread.
class CallHandlers {
public:
    void set(const std::string &name, IZVRuntime::CallHandler handler);

    /// Afterwards the handler is not called again, and no other thread is in it.
    void remove(const std::string &name);

    /// Destroys all handlers, on the calling thread.
    void clear();

    /// Calls the handler of the message's name; without one the message is dropped.
    void call(const Message &message);

private:
    struct Entry {
        IZVRuntime::CallHandler handler;
        std::vector<std::thread::id> callers; ///< the threads that are in it
    };
    struct Leaving;

    std::shared_ptr<Entry> enter(const std::string &name);
    void leave(Entry &entry);

    std::mutex m_mutex;
    std::condition_variable m_left;
    std::map<std::string, std::shared_ptr<Entry>> m_entries;
};

} // namespace tavro::runtime
