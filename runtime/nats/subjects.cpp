#include "nats/subjects.h"

#include <algorithm>

namespace tavro::runtime {

Subjects::Subjects(const NatsOptions &options, const std::string &machineId)
    : m_root(options.prefix.toStdString() + '.' + options.group.toStdString())
    , m_machineId(machineId)
{ }

bool Subjects::isPart(const std::string &name)
{
    const auto isAllowed = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
    };
    return !name.empty() && std::all_of(name.begin(), name.end(), isAllowed);
}

std::string Subjects::lastPart(const std::string &subject)
{
    return subject.substr(subject.rfind('.') + 1);
}

} // namespace tavro::runtime
