#include "themefile.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>

#include <algorithm>

namespace ZT {

namespace {

// Qt reads values of its own kinds, too, one within the other: a larger file could nest them deeper than the stack is.
constexpr qint64 largestFile = 64 * 1024;

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

// Behind the first character outside Latin-1 Qt does not look at the rest of a colour's name.
bool isNameOrNumber(const QString &text)
{
    static const QRegularExpression plain(QStringLiteral("\\A#?[A-Za-z0-9 \t]+\\z"));
    return plain.match(text).hasMatch() && QColor::isValidColor(text);
}

// Colour functions and gradients are Qt's matter, but for what would end the declaration or the rule, or leave open
// a bracket, a text, a comment, a number without digits.
bool isFunction(const QString &text)
{
    static const QRegularExpression function(
        QStringLiteral("\\A[A-Za-z][A-Za-z-]*(\\((?:[A-Za-z0-9 \t%.,:+-]|#[A-Za-z0-9]|(?1))*+\\))\\z"));
    return function.match(text).hasMatch();
}

bool isColor(const QString &text)
{
    return isNameOrNumber(text) || isFunction(text);
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

// A quotation mark, a backslash or a line break has no place in the url() of a sheet.
bool fitsUrl(QChar c)
{
    return (c.isPrint() || c.isSurrogate()) && c != QLatin1Char('"') && c != QLatin1Char('\\');
}

QString resolvedImage(const QString &value, const QDir &folder)
{
    const QString path = value.isEmpty() ? QString() : QDir::cleanPath(folder.absoluteFilePath(value));
    return std::all_of(path.begin(), path.end(), fitsUrl) ? path : QString();
}

QHash<QString, QString> readImages(QSettings &settings)
{
    const QDir folder = QFileInfo(settings.fileName()).absoluteDir();
    QHash<QString, QString> images = section(settings, QStringLiteral("ImageFiles"));
    for (QString &image : images)
        image = resolvedImage(image, folder);
    return images;
}

} // namespace

ThemeFile readThemeFile(QSettings &settings)
{
    ThemeFile file;
    if (QFileInfo(settings.fileName()).size() > largestFile)
        return file;
    file.name = valueText(settings.value(QStringLiteral("ThemeName")));
    file.colors = readColors(settings);
    file.images = readImages(settings);
    file.integers = section(settings, QStringLiteral("Integers"));
    file.flags = section(settings, QStringLiteral("Flags"));
    return file;
}

} // namespace ZT
