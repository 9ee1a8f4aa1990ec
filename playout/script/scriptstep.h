#pragma once

#include <QSize>
#include <QStringList>

#include <chrono>
#include <vector>

namespace tavro::playout {

/// One step of a script.
struct ScriptStep {
    enum class Kind { Type, Press, Click, Hover, Wait, Tell, Screenshot, Resize, Quit };
    enum class Condition { Visible, Hidden, Enabled, Disabled, Focused, Text };

    Kind kind = Kind::Quit;
    int line = 0; ///< in the file, from 1
    QString widget; ///< Click, Hover, Wait, Tell: name of the control
    QString text; ///< Type: what is typed; Wait for Text: what must be shown; Screenshot: the file
    int key = 0; ///< Press: a Qt::Key with its modifiers
    Condition condition = Condition::Visible;
    std::chrono::milliseconds limit{0}; ///< Wait
    QSize size; ///< Resize
};

/// A script as it was read. With errors, the steps are not to be played.
struct Script {
    std::vector<ScriptStep> steps;
    QStringList errors; ///< "line N: what is wrong"
};

} // namespace tavro::playout
