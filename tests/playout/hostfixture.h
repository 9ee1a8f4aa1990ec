#pragma once

#include "host.h"
#include "support/scriptedserver.h"
#include "view/mainwindow.h"

#include <QPointer>
#include <QTemporaryDir>

#include <memory>

namespace tavro::testsupport {

/// The whole host on a service that a test scripts, with a plain field "panel" in the place of the assistant's panel,
/// and three items in its library: "harbour" (red), "market" (green) and "station ident" (an animation).
class HostFixture {
public:
    HostFixture();
    ~HostFixture();

    /// Makes the host anew and shows its window. False where the window does not get the keyboard.
    bool start();

    /// A widget or an action of the window.
    template <typename Child>
    Child &child(const char *name) const
    {
        auto *const found = host->window().findChild<Child *>(QLatin1String(name));
        if (!found)
            qFatal("there is no %s", name);
        return *found;
    }

    QString labelText(const char *name) const;
    QString log() const;

    /// The controller, and the style sheet, that the panel was made with.
    static QPointer<aiassistant::AiController> controller;
    static QString panelSheet;

    QTemporaryDir media;
    QTemporaryDir data;
    ScriptedServer server;
    playout::Options options;
    std::unique_ptr<playout::Host> host;
};

} // namespace tavro::testsupport
