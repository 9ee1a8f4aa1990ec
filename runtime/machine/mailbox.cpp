#include "machine/mailbox.h"

#include <utility>

namespace tavro::runtime {

Mailbox::Mailbox(std::shared_ptr<TaskLine> line, std::shared_ptr<CallHandlers> handlers)
    : m_line(std::move(line))
    , m_handlers(std::move(handlers))
{ }

bool Mailbox::put(std::shared_ptr<const Message> message) const
{
    const std::size_t size = sizeof(Message) + message->name.size() + message->payload.size();
    if (m_waiting->fetch_add(size) + size > maxWaiting) {
        *m_waiting -= size;
        return false;
    }
    m_line->put([handlers = m_handlers, waiting = m_waiting, size, message = std::move(message)] {
        *waiting -= size;
        handlers->call(*message);
    });
    return true;
}

} // namespace tavro::runtime
