#include "openai/upstreamcheck.h"

#include "servicelog.h"

#include <system_error>

namespace tavro::assistantservice {

namespace {

constexpr std::chrono::seconds limit{5};
constexpr qint64 largestList = 4 * 1024 * 1024;

} // namespace

// Where there is no thread to be had, there is no check: the service is worth more.
UpstreamCheck::UpstreamCheck(const UpstreamClient &client)
    : m_client(client)
{
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::system_error &) {
        serviceLog().warn("event=upstream-check outcome=no-thread");
    }
}

UpstreamCheck::~UpstreamCheck()
{
    m_ending = true;
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void UpstreamCheck::run()
{
    const UpstreamAddress &address = m_client.address();
    const UpstreamReply reply = m_client.get(address.target("/models"), largestList, Patience(limit, m_ending));
    if (m_ending) {
        return;
    }
    // Some servers have no list of models and work all the same.
    const bool fine = reply.isGood() || reply.status == 404;
    serviceLog().log(fine ? spdlog::level::info : spdlog::level::warn,
                     "event=upstream-check address={} outcome={} status={}", address.text().toStdString(),
                     outcomeName(reply.outcome), reply.status);
}

} // namespace tavro::assistantservice
