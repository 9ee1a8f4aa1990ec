#pragma once

#include "step.h"

#include <chrono>
#include <vector>

namespace tavro::consolehost {

struct Options {
    QString service; ///< base address of the service, without a slash at the end
    QString token;
    QString userId;
    QString node;
    QString mediaFolder; ///< empty: no media library
    std::vector<Step> questions; ///< empty: interactive mode
    aiassistant::PictureGenerateInfo picture; ///< style and size of pictures that do not say their own
    bool download = false; ///< save every picture
    bool deepModel = false;
    bool onlineSearch = false;
    std::chrono::seconds timeout{60};
    std::chrono::seconds tick{1};

    bool isInteractive() const { return questions.empty(); }
};

} // namespace tavro::consolehost
