#pragma once

#include "nats/natsoptions.h"

#include <QString>
#include <QVector>

#include <functional>
#include <optional>

class QCommandLineParser;

namespace tavro::runtime {

/// One setting of NatsOptions as a user gives it.
struct NatsSetting {
    QString key; ///< "servers", "group", ...
    QString text; ///< for the help
    QString valueName; ///< for the help
    bool isSecret = false; ///< a credential: never on the command line, where every user of the machine can read it

    QString iniName() const; ///< "nats/group": key "group" in the file's group [nats]
    QString optionName() const; ///< "nats-group"; credentials have none
    QString environmentName() const; ///< "ASSISTANT_NATS_PASSWORD"; only credentials have one
};

/// All settings, in the order of the help.
const QVector<NatsSetting> &natsSettings();

/// Adds the command-line options for all settings but credentials.
void addNatsOptions(QCommandLineParser &parser);

/// Gives the value that a user gave to a name; nullopt where the user gave none.
using SettingLookup = std::function<std::optional<QString>(const QString &name)>;

/// The options that the user asks for. The command line holds over the environment, which holds over the file; a
/// relative "ca-file" of the file has to be made absolute by @p file. An empty @p problem: all is well; else it is a
/// sentence for the user (without any credential).
NatsOptions readNatsOptions(const QCommandLineParser &commandLine, const SettingLookup &environment,
                            const SettingLookup &file, QString &problem);

} // namespace tavro::runtime
