#pragma once

#include <QString>

/// The names under which the module's theme and sheets are known to the theme library.
namespace tavro::aiassistant::themenames {

inline QString prefix()
{
    return QStringLiteral("aiassistant");
}

inline QString group()
{
    return QStringLiteral("theme");
}

inline QString themeObject()
{
    return QStringLiteral("plumo.global.theme");
}

inline QString moduleSheets()
{
    return QStringLiteral(":/aiassistant/theme/stylesheet");
}

inline QString applicationSheets()
{
    return QStringLiteral(":/stylesheet");
}

} // namespace tavro::aiassistant::themenames
