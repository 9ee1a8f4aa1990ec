#pragma once

#include "ztheme/ztheme_export.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class QSettings;

namespace ZT {

/// The values of one theme: colours, images, integers and flags by key.
///
/// A theme file is an INI file with the sections
/// - [General]: "ThemeName";
/// - [Palettes]: named colours ("#RRGGBB", "#AARRGGBB" or a colour function of style sheets);
/// - [Colors]: colours by meaning; a value is the name of a palette entry or a colour itself;
/// - [Integers], [Flags]: numbers, and switches ("true" or "1");
/// - [ImageFiles]: paths; a relative one counts from the folder of the theme file.
/// Blanks around a value do not count. Keys are case-sensitive. A value that would end its place in a style sheet, or
/// leave something open there, cannot be used. A file of more than 64 KiB is not read.
///
/// A theme belongs to one thread at a time; nothing in it is locked.
class ZTHEME_EXPORT Theme : public QObject {
    Q_OBJECT

public:
    /// An empty theme with the object name @p name.
    explicit Theme(const QString &name, QObject *parent = nullptr);
    ~Theme() override;

    /// Replaces all values by those of @p settings, an INI file. A file that is missing or cannot be read leaves the
    /// theme empty; nothing is reported. To read file names outside ASCII, call settings.setIniCodec("UTF-8") before.
    void readSettings(QSettings &settings);

    /// True when no colour and no image is known.
    bool isEmpty() const;

    /// "ThemeName" of the file; empty where it has none.
    QString themeName() const;

    /// The colour of a [Colors] key, resolved and as a style sheet writes it ("#458CEE"). Null when the theme lacks the
    /// key, or when its value is neither a palette entry nor a colour.
    QString color(const QString &key) const;

    /// The absolute path of an [ImageFiles] key, in a resource (":/...") where the theme file is in one. Null when the
    /// theme lacks the key or its value is empty. The file need not exist.
    QString image(const QString &key) const;

    /// The number of an [Integers] key; @p fallback when the theme lacks it or it is not a number.
    int integer(const QString &key, int fallback = 0) const;

    /// The switch of a [Flags] key; false when the theme lacks it.
    bool flag(const QString &key) const;

    /// The keys of [Colors], sorted; also those whose value cannot be used.
    QStringList colorKeys() const;

    /// The keys of [ImageFiles], sorted; also those whose value cannot be used.
    QStringList imageKeys() const;

private:
    friend ZTHEME_EXPORT void replaceStyleSheet(Theme *theme, const QString &prefix, QString &sheet);

    class Private;
    std::unique_ptr<Private> d;
};

/// Reads @p files (UTF-8) and puts their texts into @p out, in list order, each ended by a line feed. What @p out held
/// is gone. A file that cannot be read is left out with a warning, and the result is then false.
ZTHEME_EXPORT bool readStyleSheet(const QStringList &files, QString &out);

/// Replaces in @p sheet every "<prefix>.theme.color.<key>" by the colour and every "<prefix>.theme.image.<key>" by the
/// path that @p theme has for the key. A key is the whole word, so that "close" is not found in "closeHover".
///
/// A colour that the theme lacks becomes "transparent", an image nothing ("url()"), because Qt drops the rest of a
/// sheet at a placeholder left standing. Each such key is logged once for each reading of the theme; an empty theme is
/// not reported. A null theme counts as an empty one.
ZTHEME_EXPORT void replaceStyleSheet(Theme *theme, const QString &prefix, QString &sheet);

/// Reads the theme named @p name (such as "default") of @p module into @p theme. Where @p module is a folder on disk,
/// the file is "<module>/<group>/<name>.theme", else the resource ":/<module>/<group>/<name>_<module>.theme". False,
/// with a warning and nothing changed, when there is no such file or @p theme is null.
ZTHEME_EXPORT bool changeTheme(Theme *theme, const QString &module, const QString &name, const QString &group);

/// The finished sheet for an application: the "*.qss" files of @p folder (such as ":/stylesheet") in name order,
/// joined, with the placeholders of @p prefix replaced. Where the application has no sheets there, those of the module
/// named @p prefix in
/// ":/<prefix>/theme/<last part of folder>" are taken. Null when there are none either.
ZTHEME_EXPORT QString findStyleSheet(Theme *theme, const QString &folder, const QString &prefix);

} // namespace ZT
