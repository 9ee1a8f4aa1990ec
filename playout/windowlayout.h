#pragma once

#include <QRect>
#include <QString>
#include <QVector>

#include <optional>

namespace tavro::playout {

/// How the operator arranged the window.
struct WindowLayout {
    QRect geometry; ///< of the window where it is not maximised; null: as the host likes it
    bool isMaximized = false;
    bool isAssistantShown = true;
    bool isLogShown = true;
    int logHeight = 0; ///< 0: what the picture leaves
};

/// The layout in the file at @p path; nullopt where there is none, or where anything in it is damaged.
std::optional<WindowLayout> readLayout(const QString &path);

/// False where the file cannot be written.
bool writeLayout(const QString &path, const WindowLayout &layout);

/// Whether an operator could get hold of the window on one of @p screens.
bool isInReach(const WindowLayout &layout, const QVector<QRect> &screens);

} // namespace tavro::playout
