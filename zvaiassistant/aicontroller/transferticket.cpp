#include "aicontroller/transferticket.h"

#include "common/taskreceiver.h"

#include <utility>

namespace tavro::aiassistant {

TransferTicket::TransferTicket(TaskReceiver &receiver, Begun begun, Done done)
    : m_receiver(&receiver)
    , m_begun(std::move(begun))
    , m_done(std::move(done))
{ }

void TransferTicket::giveBack()
{
    const std::lock_guard lock(m_lock);
    m_receiver = nullptr;
}

void TransferTicket::begin(int status)
{
    const std::lock_guard lock(m_lock);
    if (m_receiver)
        m_receiver->post([begun = m_begun, status] { begun(status); });
}

void TransferTicket::deliver(TransferOutcome outcome)
{
    const std::lock_guard lock(m_lock);
    if (m_receiver)
        m_receiver->post([done = m_done, outcome = std::move(outcome)] { done(outcome); });
}

} // namespace tavro::aiassistant
