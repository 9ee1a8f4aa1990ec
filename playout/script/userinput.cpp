#include "script/userinput.h"

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include <optional>

namespace tavro::playout::userinput {

namespace {

// Events are given to the window, so that they take the way of a user's: shortcuts, input focus, menus.
QWindow *focusedWindow(const QWidget &standard)
{
    const QWidget *const popup = QApplication::activePopupWidget();
    if (popup && popup->windowHandle())
        return popup->windowHandle();
    QWindow *const focused = QGuiApplication::focusWindow();
    return focused && focused->isVisible() ? focused : standard.windowHandle();
}

Qt::Key keyOf(QChar letter)
{
    const ushort code = letter.toUpper().unicode();
    return code < 0x80 ? static_cast<Qt::Key>(code) : Qt::Key_unknown;
}

void typeLetter(QWindow *window, const QString &letter)
{
    const QChar first = letter.at(0);
    const Qt::KeyboardModifiers modifiers = first.isUpper() ? Qt::ShiftModifier : Qt::NoModifier;
    QTest::sendKeyEvent(QTest::Click, window, keyOf(first), letter, modifiers);
}

// The middle of @p widget in its window; nullopt where something lies over it.
std::optional<QPoint> reachableMiddle(QWidget &widget)
{
    QWidget *const top = widget.window();
    const QPoint position = widget.mapTo(top, widget.rect().center());
    const QWidget *const hit = top->childAt(position);
    const bool isHit = &widget == top || hit == &widget || (hit && widget.isAncestorOf(hit));
    return isHit ? std::optional(position) : std::nullopt;
}

} // namespace

void type(const QString &text, QWidget &window)
{
    for (int at = 0; at < text.size();) {
        const int length = text.at(at).isHighSurrogate() && at + 1 < text.size() ? 2 : 1;
        typeLetter(focusedWindow(window), text.mid(at, length));
        at += length;
    }
}

void press(int key, QWidget &window)
{
    const int modifierMask = static_cast<int>(Qt::KeyboardModifierMask);
    QTest::keyClick(focusedWindow(window), static_cast<Qt::Key>(key & ~modifierMask),
                    Qt::KeyboardModifiers(key & modifierMask));
}

bool click(QWidget &widget)
{
    const std::optional<QPoint> position = reachableMiddle(widget);
    if (position)
        QTest::mouseClick(widget.window()->windowHandle(), Qt::LeftButton, Qt::NoModifier, *position);
    return position.has_value();
}

bool hover(QWidget &widget)
{
    const std::optional<QPoint> position = reachableMiddle(widget);
    if (!position)
        return false;
    QWidget &top = *widget.window();
    // Qt sends a control its enter event only when the mouse has entered the window.
    if (!top.underMouse()) {
        QEnterEvent entering(*position, *position, top.mapToGlobal(*position));
        QCoreApplication::sendEvent(top.windowHandle(), &entering);
    }
    QTest::mouseMove(top.windowHandle(), *position);
    return true;
}

} // namespace tavro::playout::userinput
