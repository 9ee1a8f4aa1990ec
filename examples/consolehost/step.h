#pragma once

#include "aicontroller/chatrecords.h"

#include <QString>

namespace tavro::consolehost {

/// One thing that the user wants: a question, or one of the commands of the interactive mode.
struct Step {
    enum class Kind {
        Nothing,
        Ask,
        Picture,
        Download,
        Stop,
        Clear,
        DeepModel,
        OnlineSearch,
        Media,
        Help,
        Quit,
        Wrong,
    };

    Kind kind = Kind::Nothing;
    QString text; ///< Ask: the question; Wrong: what is wrong
    aiassistant::PictureGenerateInfo picture; ///< Picture only
    bool on = false; ///< DeepModel and OnlineSearch only
};

/// A question in text, and one for a picture as @p defaults say otherwise. Wrong where there is no text.
Step askStep(const QString &question);
Step pictureStep(const QString &description, const aiassistant::PictureGenerateInfo &defaults);

/// Reads one typed line. What a picture's line does not say is taken from @p defaults.
Step readStep(const QString &line, const aiassistant::PictureGenerateInfo &defaults);

/// What can be typed.
QString stepHelp();

} // namespace tavro::consolehost
