#pragma once

#include <QStringList>
#include <QVector>

/// Pages of the documentation, as their readers see them. Paths count from the repository's root.
namespace page {

QString path(const QString &name);

/// The file's text; empty where there is no such file.
QString contents(const QString &name);

/// The sources of the module, the platform libraries, the runtimes and the sample host, one after the other.
QString sources();

/// The rows of the table whose first heading is @p heading, each as its cells.
QVector<QStringList> table(const QString &text, const QString &heading);

/// What stands between backquotes.
QStringList codeIn(const QString &text);

/// All that @p pattern finds, or its first group where it has one; sorted, each once.
QStringList found(const QString &text, const QString &pattern);

/// The text without its blocks of code.
QString prose(QString text);

/// The blocks of the language @p language (as behind the three backquotes; may be empty).
QStringList blocks(const QString &text, const QString &language);

} // namespace page
