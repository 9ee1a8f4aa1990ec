#pragma once

#include <QString>
#include <QVector>

namespace tavro::playout {

/// An option that takes a value, on the command line or elsewhere.
struct OptionInfo {
    QString name; ///< "service", on the command line with two dashes before it
    QString valueName; ///< for the help
    QString text; ///< for the help
    QString preset; ///< what holds where nobody gives a value
    QString presetText; ///< for the help, where the preset itself says little
    QString environment; ///< the variable that may give it; empty: none
};

/// The options that may also stand in the INI file, but for those of the broker, in the order of the help. Needs the
/// application object.
const QVector<OptionInfo> &settingInfos();

/// The one of settingInfos() with this name, which there must be.
const OptionInfo &settingInfo(const QString &name);

} // namespace tavro::playout
