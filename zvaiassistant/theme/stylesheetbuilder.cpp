#include "theme/stylesheetbuilder.h"

#include "theme/themenames.h"

#include <QDir>
#include <QSettings>

namespace tavro::aiassistant {

namespace {

QStringList moduleSheetFiles()
{
    const QString folder = themenames::moduleSheets();
    const QString filter = QStringLiteral("*.%1").arg(QLatin1String("qss"));
    QStringList files;
    const QStringList names = QDir(folder).entryList({filter}, QDir::Files, QDir::Name);
    for (const QString &name : names)
        files << QStringLiteral("%1/%2").arg(folder, name);
    return files;
}

} // namespace

std::unique_ptr<Theme> readTheme(const std::string &path)
{
    auto theme = std::make_unique<Theme>(themenames::themeObject());
    QSettings settings(QString::fromLatin1(path.data(), static_cast<int>(path.size())), QSettings::IniFormat);
    // Image paths in the file may hold any letters.
    settings.setIniCodec("UTF-8");
    theme->readSettings(settings);
    return theme;
}

QString finishedStyleSheet(Theme &theme)
{
    QString sheet;
    ZT::readStyleSheet(moduleSheetFiles(), sheet);
    ZT::replaceStyleSheet(&theme, themenames::prefix(), sheet);
    return sheet;
}

} // namespace tavro::aiassistant
