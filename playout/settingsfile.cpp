#include "settingsfile.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace tavro::playout {

namespace {

// Qt reads values of its own kinds, too, one within the other: a larger file could nest them deeper than the stack is.
constexpr qint64 largestFile = 64 * 1024;

// Nothing where it is a text. Qt takes a bare comma for a list.
QString problemOf(const QVariant &value)
{
    if (value.type() == QVariant::StringList || value.type() == QVariant::List)
        return QStringLiteral("needs quotation marks around the value of %1");
    return value.type() == QVariant::String ? QString() : QStringLiteral("has no text as the value of %1");
}

} // namespace

bool SettingsFile::read(const QString &path, const QStringList &known)
{
    m_path = path;
    const QFileInfo file(path);
    if (!file.isFile() || !file.isReadable())
        return fail(QStringLiteral("cannot be read"));
    if (file.size() > largestFile)
        return fail(QStringLiteral("is larger than %1 KiB").arg(largestFile / 1024));
    QSettings settings(path, QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    const QStringList names = settings.allKeys();
    if (settings.status() != QSettings::NoError)
        return fail(QStringLiteral("has a line that is not of the form name=value"));
    for (const QString &name : names) {
        const QVariant value = settings.value(name);
        if (!known.contains(name))
            return fail(QStringLiteral("has the unknown name %1").arg(name));
        if (const QString problem = problemOf(value); !problem.isEmpty())
            return fail(problem.arg(name));
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
