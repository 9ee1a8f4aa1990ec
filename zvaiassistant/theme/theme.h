#pragma once

#include "common/export.h"
#include "ztheme/ztheme.h"

namespace tavro::aiassistant {

/// The panel's theme: the host library's theme under a type of its own.
class ZVAIASSISTANT_EXPORT Theme : public ZT::Theme {
    Q_OBJECT

public:
    /// An empty theme with the object name @p name, such as "plumo.global.theme".
    explicit Theme(const QString &name, QObject *parent = nullptr);
    ~Theme() override;
};

/// Reads the theme named @p b (such as "default") of the module or folder @p a (such as "aiassistant") into @p theme;
/// see ZT::changeTheme(), group "theme". A theme that is not found changes nothing and is logged.
ZVAIASSISTANT_EXPORT void changeTheme(ZT::Theme *theme, const QString &a, const QString &b);

/// changeTheme(), and then makes the sheets in ":/stylesheet" (where the application has none, the panel's own), filled
/// from
/// @p theme, the style sheet of the running QApplication. GUI thread only. Without a QApplication a warning is logged
/// and only the theme changes.
ZVAIASSISTANT_EXPORT void changeAppStyleSheet(ZT::Theme *theme, const QString &a, const QString &b);

} // namespace tavro::aiassistant
