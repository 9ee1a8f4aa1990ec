#include "settingsfile.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace tavro::playout {

bool SettingsFile::read(const QString &path, const QStringList &known)
{
    m_path = path;
    const QFileInfo file(path);
    if (!file.isFile() || !file.isReadable())
        return fail(QStringLiteral("cannot be read"));
    QSettings settings(path, QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    const QStringList names = settings.allKeys();
    if (settings.status() != QSettings::NoError)
        return fail(QStringLiteral("has a line that is not of the form name=value"));
    for (const QString &name : names) {
        const QVariant value = settings.value(name);
        if (!known.contains(name))
            return fail(QStringLiteral("has the unknown name %1").arg(name));
        // Qt takes a bare comma for a list.
        if (value.type() == QVariant::StringList)
            return fail(QStringLiteral("needs quotation marks around the value of %1").arg(name));
        m_values.insert(name, value.toString());
    }
    return true;
}

std::optional<QString> SettingsFile::value(const QString &name) const
{
    const auto found = m_values.constFind(name);
    return found == m_values.constEnd() ? std::nullopt : std::optional(*found);
}

std::optional<QString> SettingsFile::path(const QString &name) const
{
    std::optional<QString> given = value(name);
    if (!given || given->isEmpty())
        return given;
    return QDir(QFileInfo(m_path).absolutePath()).absoluteFilePath(*given);
}

bool SettingsFile::fail(const QString &why)
{
    m_error = QStringLiteral("%1 %2").arg(m_path, why);
    return false;
}

} // namespace tavro::playout
