#pragma once

#include <QMap>
#include <QStringList>

/// The keys that the default theme must have, and the files of the resources as they stand.
namespace themevocabulary {

QStringList paletteKeys();
QStringList colorKeys();
QStringList imageKeys();

/// The [Colors] key under which a palette entry is known.
QString exportedName(const QString &paletteKey);

QString contents(const QString &path);

/// The default theme's values by section and key: what stands behind the first "=" of the line, blanks too.
QMap<QString, QMap<QString, QString>> rawSections();

/// The words of @p text, and a list in order.
QStringList words(const char *text);
QStringList sorted(QStringList list);

} // namespace themevocabulary
