#include "settings/settingswriter.h"

#include "optionlist.h"
#include "settings/initext.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>
#include <QTemporaryFile>

#include <optional>

namespace tavro::playout {

namespace {

constexpr QFile::Permissions ownersOnly = QFile::ReadOwner | QFile::WriteOwner;

// By name; nullopt: to be taken out.
using Changes = QMap<QString, std::optional<QString>>;

Changes changes(const Options &before, const Options &after)
{
    const QMap<QString, QString> old = settingValues(before);
    const QMap<QString, QString> wanted = settingValues(after);
    Changes changed;
    for (auto each = wanted.begin(); each != wanted.end(); ++each) {
        const bool isPreset = *each == settingInfo(each.key()).preset;
        if (*each != old.value(each.key()))
            changed.insert(each.key(), isPreset ? std::nullopt : std::optional(*each));
    }
    return changed;
}

std::optional<QByteArray> readBytes(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return QByteArray("");
    if (!file.open(QFile::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

// Nullopt where the bytes are no UTF-8: what is not to be changed would not come back as it was.
std::optional<QString> textOf(const QByteArray &bytes)
{
    QString text = QString::fromUtf8(bytes.constData(), bytes.size());
    const QByteArray mark = QByteArrayLiteral("\xef\xbb\xbf");
    const bool isKept = text.toUtf8() == (bytes.startsWith(mark) ? bytes.mid(mark.size()) : bytes);
    return isKept ? std::optional(std::move(text)) : std::nullopt;
}

QString edited(const QString &text, const Changes &changed)
{
    IniText file(text);
    for (auto each = changed.begin(); each != changed.end(); ++each) {
        if (*each)
            file.set(each.key(), **each);
        else
            file.remove(each.key());
    }
    return file.text();
}

// Nullopt where the host would refuse it.
std::optional<QMap<QString, QVariant>> parsed(const QString &text)
{
    QTemporaryFile file;
    if (!file.open() || file.write(text.toUtf8()) < 0 || !file.flush())
        return std::nullopt;
    QSettings settings(file.fileName(), QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    QMap<QString, QVariant> values;
    const QStringList names = settings.allKeys();
    for (const QString &name : names)
        values.insert(name, settings.value(name));
    return settings.status() == QSettings::NoError ? std::optional(values) : std::nullopt;
}

// Read as the host will read it, the new text differs from the old one in what was to be changed, and in nothing else.
bool isFaithful(const QString &before, const QString &after, const Changes &changed)
{
    auto wanted = parsed(before);
    if (!wanted)
        return false;
    for (auto each = changed.begin(); each != changed.end(); ++each) {
        if (*each)
            wanted->insert(each.key(), **each);
        else
            wanted->remove(each.key());
    }
    return parsed(after) == wanted;
}

QString write(const QString &path, const QString &text)
{
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        return QStringLiteral("The folder of %1 cannot be made.").arg(path);
    QSaveFile file(path);
    // The rights come before the secrets.
    const bool isWritten = file.open(QFile::WriteOnly) && file.setPermissions(ownersOnly)
        && file.write(text.toUtf8()) >= 0 && file.commit();
    return isWritten ? QString() : QStringLiteral("%1 cannot be written: %2.").arg(path, file.errorString());
}

} // namespace

QMap<QString, QString> settingValues(const Options &options)
{
    return {
        {QStringLiteral("service"), options.service},
        {QStringLiteral("token"), options.token},
        {QStringLiteral("user-id"), options.userId},
        {QStringLiteral("node"), options.node},
        {QStringLiteral("timeout"), QString::number(options.timeout.count())},
        {QStringLiteral("tick"), QString::number(options.tick.count())},
        {QStringLiteral("media"), options.mediaFolder},
        {QStringLiteral("language"), options.language},
        {QStringLiteral("theme"), options.themeFile},
    };
}

QString saveSettings(const Options &before, const Options &after)
{
    const Changes changed = changes(before, after);
    if (changed.isEmpty())
        return {};
    const std::optional<QByteArray> bytes = readBytes(after.settingsFile);
    if (!bytes)
        return QStringLiteral("%1 cannot be read.").arg(after.settingsFile);
    const std::optional<QString> text = textOf(*bytes);
    const QString newText = text ? edited(*text, changed) : QString();
    if (!text || !isFaithful(*text, newText, changed))
        return QStringLiteral("%1 is written in a way that only an editor can change.").arg(after.settingsFile);
    return write(after.settingsFile, newText);
}

} // namespace tavro::playout
