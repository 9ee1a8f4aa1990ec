#pragma once

#include "nats/natsoptions.h"

#include <QHash>
#include <QString>

#include <chrono>
#include <optional>

namespace tavro::playout {

/// Which part this program plays when several machines share one assistant.
enum class Role {
    All, ///< asks the service and shows the panel, as two machines in one program
    Local, ///< the same with one controller, and without the messages between machines
    Server, ///< asks the service for the client machines, and has no panel
    Client, ///< shows the panel; another machine asks the service
};

/// As users write it: "all", "local", "server", "client".
QString nameOf(Role role);
std::optional<Role> roleNamed(const QString &name);

/// What the program was asked for, by the command line, the environment and the INI file.
struct Options {
    QString service; ///< base address of the service, without a slash at the end
    QString token;
    QString userId;
    QString node;
    QString mediaFolder; ///< empty: no media but generated pictures
    QString language;
    QString themeFile; ///< a resource or a file
    Role role = Role::All;
    runtime::NatsOptions nats; ///< Server and Client: where the machines meet
    QString scriptFile; ///< empty: no script
    std::chrono::seconds timeout{0};
    std::chrono::seconds tick{0};
    QString settingsFile; ///< the INI file, which need not exist
    QString layoutFile; ///< where the window's layout is kept; empty: nowhere
    QHash<QString, QString> givenBy; ///< of the settings that the INI file cannot change, what gave them
};

} // namespace tavro::playout
