#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace tavro::playout {

/// The INI file: lines of the form name=value, with the names of the options.
class SettingsFile {
public:
    /// Reads @p path (UTF-8). The names that may be in it are @p known. False, with error(), where the file cannot be
    /// read or has something else in it.
    bool read(const QString &path, const QStringList &known);

    const QString &error() const { return m_error; }

    /// The value; nullopt where the file does not give it.
    std::optional<QString> value(const QString &name) const;

    /// The value as a path. A relative one counts from the file's folder.
    std::optional<QString> path(const QString &name) const;

private:
    bool fail(const QString &why);

    QString m_path;
    QString m_error;
    QHash<QString, QString> m_values;
};

} // namespace tavro::playout
