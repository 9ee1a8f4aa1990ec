#pragma once

#include <QString>

class QWidget;

namespace tavro::playout::userinput {

// The keys go to the window that has the keyboard, or where none has it to @p window, which must be shown.

/// Types @p text key by key.
void type(const QString &text, QWidget &window);

/// Presses and releases @p key, a Qt::Key with its modifiers.
void press(int key, QWidget &window);

/// Clicks the middle of @p widget with the left mouse button. False where a user could not: something lies over it.
bool click(QWidget &widget);

/// Moves the mouse to the middle of @p widget. False where a user could not.
bool hover(QWidget &widget);

} // namespace tavro::playout::userinput
