#include "nats/presencemessage.h"

#include <QString>

#include <algorithm>
#include <array>
#include <utility>

namespace tavro::runtime {

namespace {

using Kind = PresenceMessage::Kind;

constexpr std::array<std::pair<Kind, const char *>, 4> words{{
    {Kind::Serving, "serving"},
    {Kind::Leaving, "leaving"},
    {Kind::Claiming, "claiming"},
    {Kind::Asking, "asking"},
}};

constexpr std::size_t longestText = 512;

} // namespace

std::string PresenceMessage::toText() const
{
    const auto *const word =
        std::find_if(words.begin(), words.end(), [this](auto &each) { return each.first == kind; });
    return std::string(word->second) + ' ' + id + ' ' + name;
}

// A name is shown and logged, whoever sent it.
std::string PresenceMessage::printable(const std::string &name)
{
    const QString given = QString::fromStdString(name);
    QString kept;
    for (const QChar c : given) {
        if (c.isPrint() || c.isSurrogate())
            kept += c;
    }
    return kept.toStdString();
}

std::optional<PresenceMessage> PresenceMessage::fromText(const std::string &text)
{
    const std::size_t wordEnd = text.find(' ');
    const std::size_t idEnd = wordEnd == std::string::npos ? wordEnd : text.find(' ', wordEnd + 1);
    if (idEnd == std::string::npos || text.size() > longestText)
        return std::nullopt;
    const std::string given = text.substr(0, wordEnd);
    const auto *const word =
        std::find_if(words.begin(), words.end(), [&given](auto &each) { return each.second == given; });
    const std::string name = printable(text.substr(idEnd + 1));
    if (word == words.end() || name.empty())
        return std::nullopt;
    return PresenceMessage{word->first, text.substr(wordEnd + 1, idEnd - wordEnd - 1), name};
}

} // namespace tavro::runtime
