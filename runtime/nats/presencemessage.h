#pragma once

#include <optional>
#include <string>

namespace tavro::runtime {

/// What machines tell each other about who serves: the kind, the sender's id and its name, with a blank between.
struct PresenceMessage {
    enum class Kind {
        Serving, ///< I serve
        Leaving, ///< I served and go
        Claiming, ///< I want to serve: does another?
        Asking, ///< who serves?
    };

    Kind kind = Kind::Asking;
    std::string id; ///< tells two machines of one name apart
    std::string name; ///< for the operator

    std::string toText() const;
    static std::string printable(const std::string &name); ///< without the characters that cannot be shown
    /// Nothing where @p text is not such a message.
    static std::optional<PresenceMessage> fromText(const std::string &text);
};

} // namespace tavro::runtime
