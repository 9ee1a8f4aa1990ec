#include "nats/subjects.h"

#include <algorithm>

namespace tavro::runtime {

namespace {

bool isPartOfName(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
}

} // namespace

Subjects::Subjects(const NatsOptions &options, const std::string &machineId)
    : m_root(options.prefix.toStdString() + '.' + options.group.toStdString())
    , m_machineId(machineId)
{ }

bool Subjects::isPart(const std::string &name)
{
    return !name.empty() && std::all_of(name.begin(), name.end(), isPartOfName);
}

std::string Subjects::messageNamedIn(const std::string &sentence) const
{
    for (const std::string &subject : {call({}), completion({})}) {
        const std::size_t found = sentence.find(subject);
        if (found == std::string::npos)
            continue;
        const std::string rest = sentence.substr(found + subject.size());
        return {rest.begin(), std::find_if_not(rest.begin(), rest.end(), isPartOfName)};
    }
    return {};
}

std::string Subjects::lastPart(const std::string &subject)
{
    return subject.substr(subject.rfind('.') + 1);
}

} // namespace tavro::runtime
