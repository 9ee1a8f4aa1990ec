#pragma once

#include <QString>
#include <QStringList>

class QComboBox;

namespace tavro::playout {

/// The languages that come with the assistant and @p more, each with its name as its data; @p current is chosen.
QComboBox *makeLanguages(const QStringList &more, const QString &current);

/// The built-in themes with their files as data, and one entry with empty data for a file of the operator's; @p current
/// is chosen.
QComboBox *makeThemes(const QString &current);

bool isBuiltInTheme(const QString &path);

} // namespace tavro::playout
