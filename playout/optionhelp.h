#pragma once

#include <QCommandLineParser>
#include <QString>

namespace tavro::playout {

/// Adds all of the program's options, with their help, to @p parser. @p standardConfig: the INI file that is read where
/// none is named.
void addOptions(QCommandLineParser &parser, const QString &standardConfig);

/// What --help prints.
QString helpText(const QCommandLineParser &parser);

} // namespace tavro::playout
