#pragma once

#include <QStringList>

namespace tavro::aiassistant {
struct PictureGenerateInfo;
}

namespace tavro::consolehost {

/// The ratios in which the assistant's panel offers pictures.
QStringList pictureRatios();

/// Sets the size in @p info to that of @p ratio. False where it is none of pictureRatios(); nothing is changed then.
bool setRatio(aiassistant::PictureGenerateInfo &info, const QString &ratio);

} // namespace tavro::consolehost
