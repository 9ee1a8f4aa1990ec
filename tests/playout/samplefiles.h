#pragma once

#include <QColor>
#include <QSize>
#include <QString>

namespace tavro::testsupport {

/// Writes a PNG of one colour; the folder must exist. False where it cannot.
bool writePicture(const QString &path, const QColor &color = Qt::red, const QSize &size = {64, 36});

/// Copies a medium that comes with the program, such as "harbour clip.gif", into @p folder. Gives its path; empty where
/// it cannot.
QString copySample(const QString &name, const QString &folder);

} // namespace tavro::testsupport
