#pragma once

#include <cstdint>
#include <string>

namespace tavro::aiassistant {

/// One command for the host out of an answer, such as "play this media item on that layer".
///
/// The assistant does not carry commands out: the host receives them through IAiController::sigAgentCmds. Values that
/// the answer did not give keep their defaults.
struct AgentCmd {
    /// Values of cmdType that the assistant itself gives a meaning; all others are agreed between service and host.
    enum Type : std::int32_t {
        GeneratedPicture = 0, ///< act on the picture that was generated last, saved at localPath
        LibraryMedia = 999, ///< act on the media item mediaId of the host's library
        Unspecified = 1000, ///< the answer named no command type
    };

    std::int32_t cmdType = Unspecified; ///< see Type
    bool bPlay = false; ///< play, or not
    std::int32_t playWay = 0; ///< way of playing, as agreed between service and host
    std::int32_t programId = -1; ///< -1: not given
    std::int32_t layerId = -1; ///< -1: not given
    std::int32_t outputId = -1; ///< -1: not given
    std::string mediaId; ///< id of a media item of the host's library; empty: not given
    double volume = -1.0; ///< as agreed between service and host; -1: not given
    std::string localPath; ///< file of the generated picture (GeneratedPicture only); empty where there is none
};

} // namespace tavro::aiassistant
