#pragma once

#include <QString>

/// What the program writes, in UTF-8: results on standard output, messages on standard error. Control characters are
/// taken out, so that no text of the service can steer the user's terminal.
namespace tavro::consolehost::console {

/// One result with its name in front, on one line.
void result(const QString &name, const QString &text);

/// A text that may have several lines.
void text(const QString &text);

/// One line for the user.
void message(const QString &text);

/// Whether all results could be written so far.
bool isWritten();

/// Shows that a line may be typed, where a person sits at a terminal.
void prompt();

} // namespace tavro::consolehost::console
