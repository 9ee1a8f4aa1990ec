#pragma once

#include <spdlog/sinks/base_sink.h>

#include <mutex>

namespace tavro::assistantservice {

/// Writes log lines to a descriptor that others own. Where nobody reads there lines are dropped, and counted in a line
/// as soon as it can be written: a service must not stand still because of its log.
class LineSink : public spdlog::sinks::base_sink<std::mutex> {
public:
    explicit LineSink(int descriptor);

protected:
    void sink_it_(const spdlog::details::log_msg &message) override;
    void flush_() override { }

private:
    bool write(const spdlog::details::log_msg &message);
    bool writeLost();

    const int m_descriptor;
    long long m_lost = 0;
};

} // namespace tavro::assistantservice
