#include "themefile.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>

namespace ZT {

namespace {

// QSettings splits a value at its commas, as in rgba(0, 0, 0, 0.85).
QString valueText(const QVariant &value)
{
    if (value.userType() == QMetaType::QStringList)
        return value.toStringList().join(QLatin1String(", ")).trimmed();
    return value.toString().trimmed();
}

QHash<QString, QString> section(QSettings &settings, const QString &name)
{
    QHash<QString, QString> values;
    settings.beginGroup(name);
    const QStringList keys = settings.allKeys();
    for (const QString &key : keys)
        values.insert(key, valueText(settings.value(key)));
    settings.endGroup();
    return values;
}

// Colour functions and gradients are Qt's matter; what could end the declaration or the rule is refused.
bool isColor(const QString &text)
{
    static const QRegularExpression function(QStringLiteral("^[A-Za-z-]+\\([^{};]*\\)$"));
    return QColor::isValidColor(text) || function.match(text).hasMatch();
}

QString resolvedColor(const QString &value, const QHash<QString, QString> &palettes)
{
    const QString color = palettes.value(value, value);
    return isColor(color) ? color : QString();
}

QHash<QString, QString> readColors(QSettings &settings)
{
    const QHash<QString, QString> palettes = section(settings, QStringLiteral("Palettes"));
    QHash<QString, QString> colors = section(settings, QStringLiteral("Colors"));
    for (QString &color : colors)
        color = resolvedColor(color, palettes);
    return colors;
}

QHash<QString, QString> readImages(QSettings &settings)
{
    const QDir folder = QFileInfo(settings.fileName()).absoluteDir();
    QHash<QString, QString> images = section(settings, QStringLiteral("ImageFiles"));
    for (QString &image : images)
        image = image.isEmpty() ? QString() : QDir::cleanPath(folder.absoluteFilePath(image));
    return images;
}

} // namespace

ThemeFile readThemeFile(QSettings &settings)
{
    ThemeFile file;
    file.name = valueText(settings.value(QStringLiteral("ThemeName")));
    file.colors = readColors(settings);
    file.images = readImages(settings);
    file.integers = section(settings, QStringLiteral("Integers"));
    file.flags = section(settings, QStringLiteral("Flags"));
    return file;
}

} // namespace ZT
