#pragma once

#include <cstddef>
#include <string>

namespace tavro::runtime {

/// Why a message was lost, in sentences for the operator that all runtimes use.
class LossReason {
public:
    static std::string tooLarge(std::size_t size, std::size_t limit);
    static std::string badName();
    static std::string noServer();
    static std::string notConnected();
    static std::string receiverIsBusy();
    static std::string standingBy(const std::string &servingMachine);
};

} // namespace tavro::runtime
