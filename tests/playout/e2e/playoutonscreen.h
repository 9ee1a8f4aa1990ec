#pragma once

#include "virtualscreen.h"

#include <QProcess>
#include <QRect>
#include <QTemporaryDir>

namespace tavro::testsupport {

/// A control of the program, as its script tells of it.
struct Control {
    QString text;
    bool isEnabled = false;
    QRect place; ///< on the screen; null where the program told nothing

    QPoint middle() const { return place.center(); }
};

/// The real playout in a window on a virtual screen. A script waits for what the user does there, and tells of
/// controls.
class PlayoutOnScreen {
public:
    explicit PlayoutOnScreen(const VirtualScreen &screen);
    ~PlayoutOnScreen();

    /// Starts it with that script, on the service at that address.
    bool start(const QString &service, const QString &script);

    /// Waits for the next control that the script tells of. It has no place where none comes.
    Control nextControl();

    /// Waits for the end; -1 where it does not come or is not a normal one.
    int exitCode();

    QString complaints() const { return m_complaints; } ///< what the program wrote about its errors
    QString file(const QString &name) const { return m_folder.filePath(name); } ///< of the program's own folder

private:
    const VirtualScreen &m_screen;
    QTemporaryDir m_folder;
    QProcess m_program;
    QString m_complaints;
};

} // namespace tavro::testsupport
