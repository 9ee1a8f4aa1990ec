#include "linesink.h"

#include "linewriting.h"

#include <spdlog/details/log_msg.h>

#include <climits>
#include <string>

namespace tavro::assistantservice {

LineSink::LineSink(int descriptor)
    : m_descriptor(descriptor)
{ }

void LineSink::sink_it_(const spdlog::details::log_msg &message)
{
    if (!writeLost() || !write(message)) {
        ++m_lost;
    }
}

// True where nothing was lost, or has been reported.
bool LineSink::writeLost()
{
    if (m_lost == 0) {
        return true;
    }
    const std::string text = "event=log-lost count=" + std::to_string(m_lost);
    if (!write({"assistantservice", spdlog::level::warn, text})) {
        return false;
    }
    m_lost = 0;
    return true;
}

bool LineSink::write(const spdlog::details::log_msg &message)
{
    spdlog::memory_buf_t line;
    formatter_->format(message, line);
    if (line.size() > PIPE_BUF) {
        line.resize(PIPE_BUF);
        line[PIPE_BUF - 1] = '\n';
    }
    return writeWithoutWaiting(m_descriptor, line.data(), line.size());
}

} // namespace tavro::assistantservice
