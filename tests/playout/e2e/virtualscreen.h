#pragma once

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

namespace tavro::testsupport {

/// An X server without a display, on a free number, and the hands of a user on it.
class VirtualScreen {
public:
    VirtualScreen() = default;
    ~VirtualScreen();

    /// Starts it and waits until it takes connections.
    bool start(const QSize &size);

    QString display() const { return m_display; } ///< ":7"

    /// What is on the screen now; null where that cannot be read.
    QImage picture() const;

    // Each is done when it returns; what the programs make of it is not. False where it cannot be done.
    bool click(const QPoint &place) const;
    bool point(const QPoint &place) const; ///< moves the mouse
    bool type(const QString &text) const;
    bool press(const QString &key) const; ///< as X names it: "Return"

private:
    bool act(const QStringList &arguments) const;

    QTemporaryDir m_folder;
    QProcess m_server;
    QString m_display;
};

} // namespace tavro::testsupport
