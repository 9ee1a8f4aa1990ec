#pragma once

#include <QString>

#include <chrono>

namespace tavro::playout {

/// What the program was asked for, by the command line, the environment and the INI file.
struct Options {
    QString service; ///< base address of the service, without a slash at the end
    QString token;
    QString userId;
    QString node;
    QString mediaFolder; ///< empty: no media but generated pictures
    QString language;
    QString themeFile; ///< a resource or a file
    QString role;
    QString scriptFile; ///< empty: no script
    std::chrono::seconds timeout{0};
    std::chrono::seconds tick{0};
};

} // namespace tavro::playout
