#include "machine/callhandlers.h"

#include "machine/loggingcategories.h"

#include <algorithm>
#include <utility>

namespace tavro::runtime {

Message makeMessage(const char *name, const char *data, std::size_t size)
{
    return {name, size > 0 ? std::string(data, size) : std::string()};
}

// What a handler holds may use the handlers when it is destroyed. So in each of the next three the handler goes after
// the lock, which was made later.

void CallHandlers::set(const std::string &name, IZVRuntime::CallHandler handler)
{
    auto entry = std::make_shared<Entry>();
    entry->handler = std::move(handler);
    const std::lock_guard lock(m_mutex);
    entry.swap(m_entries[name]);
}

void CallHandlers::remove(const std::string &name)
{
    std::shared_ptr<Entry> entry;
    std::unique_lock lock(m_mutex);
    const auto found = m_entries.find(name);
    if (found == m_entries.end())
        return;
    entry.swap(found->second);
    m_entries.erase(found);
    // A handler that unregisters itself would wait for its own end.
    m_left.wait(lock, [&callers = entry->callers] {
        const auto isThisThread = [](std::thread::id caller) { return caller == std::this_thread::get_id(); };
        return std::all_of(callers.begin(), callers.end(), isThisThread);
    });
}

void CallHandlers::clear()
{
    std::map<std::string, std::shared_ptr<Entry>> gone;
    const std::lock_guard lock(m_mutex);
    gone.swap(m_entries);
}

// Also by an exception: who unregisters the name would wait for ever.
struct CallHandlers::Leaving {
    CallHandlers &handlers;
    Entry &entry;

    ~Leaving() { handlers.leave(entry); }
};

void CallHandlers::call(const Message &message)
{
    const std::shared_ptr<Entry> entry = enter(message.name);
    if (!entry) {
        qCDebug(lcRuntime, "no handler for %s", message.name.c_str());
        return;
    }
    const Leaving leaving{*this, *entry};
    const std::string &payload = message.payload;
    entry->handler(message.name.c_str(), payload.empty() ? nullptr : payload.data(),
                   static_cast<unsigned int>(payload.size()));
}

std::shared_ptr<CallHandlers::Entry> CallHandlers::enter(const std::string &name)
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_entries.find(name);
    if (found == m_entries.end())
        return nullptr;
    found->second->callers.push_back(std::this_thread::get_id());
    return found->second;
}

void CallHandlers::leave(Entry &entry)
{
    const std::lock_guard lock(m_mutex);
    auto &callers = entry.callers;
    callers.erase(std::find(callers.begin(), callers.end(), std::this_thread::get_id()));
    m_left.notify_all();
}

} // namespace tavro::runtime
