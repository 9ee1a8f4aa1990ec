#include "machine/lossreasons.h"

namespace tavro::runtime {

std::string LossReason::tooLarge(std::size_t size, std::size_t limit)
{
    return "it has " + std::to_string(size) + " bytes, and at most " + std::to_string(limit) + " can be sent";
}

std::string LossReason::badName()
{
    return "its name has other characters than letters, digits, '-' and '_'";
}

std::string LossReason::noServer()
{
    return "no machine serves the group";
}

std::string LossReason::notConnected()
{
    return "there is no connection";
}

std::string LossReason::receiverIsBusy()
{
    return "too many messages wait for the machine that should receive it";
}

std::string LossReason::standingBy(const std::string &servingMachine)
{
    return "this machine stands by for " + servingMachine;
}

} // namespace tavro::runtime
