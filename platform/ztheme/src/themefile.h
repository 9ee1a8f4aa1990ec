#pragma once

#include <QHash>
#include <QString>

class QSettings;

namespace ZT {

/// What a theme file holds, resolved: colours ready for a sheet, image paths absolute. A value that cannot be used is
/// null.
struct ThemeFile {
    QString name;
    QHash<QString, QString> colors;
    QHash<QString, QString> images;
    QHash<QString, QString> integers;
    QHash<QString, QString> flags;
};

ThemeFile readThemeFile(QSettings &settings);

} // namespace ZT
