#pragma once

#include "nats/natsoptions.h"

#include <string>

namespace tavro::runtime {

/// The subjects on which a machine sends and listens.
class Subjects {
public:
    Subjects(const NatsOptions &options, const std::string &machineId);

    std::string call(const std::string &name) const { return m_root + ".server." + name; }
    std::string completion(const std::string &name) const { return m_root + ".clients." + name; }

    /// Where a serving machine says that it is there.
    std::string presence() const { return m_root + ".presence"; }
    /// Where machines ask who serves; only those that may serve listen.
    std::string question() const { return m_root + ".presence.question"; }

    /// Where what comes back to this machine arrives: answers to its question, and a call that nobody took.
    std::string inbox() const { return m_root + ".machine." + m_machineId + ".>"; }
    std::string answer() const { return m_root + ".machine." + m_machineId + '.' + answerName; }
    std::string untakenCall(const std::string &name) const
    {
        return m_root + ".machine." + m_machineId + ".untaken." + name;
    }
    static constexpr char answerName[] = "?"; ///< last part of answer(), which no call has for its name

    /// Whether @p name can be a part of a subject: the library checks none, and a blank would end the subject.
    static bool isPart(const std::string &name);

    /// The name of the call or completion that a sentence of the broker's speaks of; empty where of none.
    std::string messageNamedIn(const std::string &sentence) const;

    /// The last part of a subject: of calls and completions, the name.
    static std::string lastPart(const std::string &subject);

private:
    std::string m_root;
    std::string m_machineId;
};

} // namespace tavro::runtime
