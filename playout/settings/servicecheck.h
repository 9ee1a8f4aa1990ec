#pragma once

#include <QString>

#include <memory>

namespace tavro::aiassistant {
class TaskQueue;
}

namespace tavro::playout {

/// How the service is asked.
struct ServiceAccess {
    QString address; ///< without a slash at the end
    QString token;
    QString userId;
    QString node;
};

/// What asking the service came to.
struct ServiceReport {
    enum class Outcome { Reachable, BadAddress, UnknownHost, Refused, Unsafe, TimedOut, WrongToken, NoAssistant };

    Outcome outcome = Outcome::NoAssistant;
    QString text; ///< a sentence for the operator
};

/// Asks the service for a request that nobody made, which tells whether it is an assistant's and takes the token, and
/// changes nothing there. Blocks for at most 15 s. To be called on the thread that runs @p worker; its QThread's quit()
/// ends it early, with whatever report.
ServiceReport checkService(const ServiceAccess &access, const std::shared_ptr<aiassistant::TaskQueue> &worker);

} // namespace tavro::playout
