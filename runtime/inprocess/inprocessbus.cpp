#include "inprocess/inprocessbus.h"

#include "inprocess/inprocessmembers.h"

namespace tavro::runtime {

InProcessBus::InProcessBus(unsigned int maxPayload)
    : m_members(std::make_shared<InProcessMembers>(maxPayload))
{ }

InProcessBus::~InProcessBus() = default;

} // namespace tavro::runtime
