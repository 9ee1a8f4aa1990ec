#pragma once

#include "options.h"

#include <QMap>
#include <QString>

namespace tavro::playout {

/// The settings that an operator can change while the host runs, by the options' names and as the INI file has them.
QMap<QString, QString> settingValues(const Options &options);

/// Writes what differs between the two into the INI file of @p after. What is as it is without any setting is
/// taken out of the file; all else in it stays. Only its owner can read the file afterwards. Gives what went wrong in a
/// sentence, and the file is then as it was; empty where all went well.
QString saveSettings(const Options &before, const Options &after);

} // namespace tavro::playout
