#include "ztheme/ztheme.h"

#include "logging.h"
#include "placeholders.h"
#include "themefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QSettings>

namespace ZT {

class Q_DECL_HIDDEN Theme::Private {
public:
    QString colorOrTransparent(const QString &key);
    QString imageOrNothing(const QString &key);

    ThemeFile file;

private:
    void reportMissing(const char *kind, const QString &key);

    QSet<QString> reported;
};

namespace {

QStringList sortedKeys(const QHash<QString, QString> &values)
{
    QStringList keys = values.keys();
    keys.sort();
    return keys;
}

QString themePath(const QString &module, const QString &name, const QString &group)
{
    if (!module.isEmpty() && QFileInfo(module).isDir())
        return QStringLiteral("%1/%2/%3.theme").arg(module, group, name);
    return QStringLiteral(":/%1/%2/%3_%1.theme").arg(module, group, name);
}

QStringList sheetsIn(const QString &folder)
{
    QStringList files;
    const QStringList names = QDir(folder).entryList({QStringLiteral("*.qss")}, QDir::Files, QDir::Name);
    for (const QString &name : names)
        files << QStringLiteral("%1/%2").arg(folder, name);
    return files;
}

} // namespace

QString Theme::Private::colorOrTransparent(const QString &key)
{
    const QString color = file.colors.value(key);
    if (!color.isNull())
        return color;
    reportMissing("colour", key);
    return QStringLiteral("transparent");
}

QString Theme::Private::imageOrNothing(const QString &key)
{
    const QString image = file.images.value(key);
    if (image.isNull())
        reportMissing("image", key);
    return image;
}

void Theme::Private::reportMissing(const char *kind, const QString &key)
{
    if (file.colors.isEmpty() && file.images.isEmpty())
        return;
    const QString what = QLatin1String(kind) + QLatin1Char(' ') + key;
    if (reported.contains(what))
        return;
    reported.insert(what);
    qCWarning(logTheme).noquote() << "theme" << file.name << "lacks" << what;
}

Theme::Theme(const QString &name, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    setObjectName(name);
}

Theme::~Theme() = default;

void Theme::readSettings(QSettings &settings)
{
    *d = Private();
    d->file = readThemeFile(settings);
}

bool Theme::isEmpty() const
{
    return d->file.colors.isEmpty() && d->file.images.isEmpty();
}

QString Theme::themeName() const
{
    return d->file.name;
}

QString Theme::color(const QString &key) const
{
    return d->file.colors.value(key);
}

QString Theme::image(const QString &key) const
{
    return d->file.images.value(key);
}

int Theme::integer(const QString &key, int fallback) const
{
    bool isNumber = false;
    const int number = d->file.integers.value(key).toInt(&isNumber);
    return isNumber ? number : fallback;
}

bool Theme::flag(const QString &key) const
{
    const QString value = d->file.flags.value(key);
    return value == QLatin1String("1") || value.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

QStringList Theme::colorKeys() const
{
    return sortedKeys(d->file.colors);
}

QStringList Theme::imageKeys() const
{
    return sortedKeys(d->file.images);
}

bool readStyleSheet(const QStringList &files, QString &out)
{
    out.clear();
    bool allRead = true;
    for (const QString &path : files) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly)) {
            out += QString::fromUtf8(file.readAll()) + QLatin1Char('\n');
        } else {
            qCWarning(logTheme).noquote() << "style sheet" << path << "cannot be read:" << file.errorString();
            allRead = false;
        }
    }
    return allRead;
}

void replaceStyleSheet(Theme *theme, const QString &prefix, QString &sheet)
{
    Theme::Private none;
    Theme::Private &values = theme ? *theme->d : none;
    sheet = withoutPlaceholders(
        sheet, prefix, [&values](const QString &key) { return values.colorOrTransparent(key); },
        [&values](const QString &key) { return values.imageOrNothing(key); });
}

bool changeTheme(Theme *theme, const QString &module, const QString &name, const QString &group)
{
    const QString path = themePath(module, name, group);
    if (!theme || !QFileInfo(path).isFile()) {
        qCWarning(logTheme).noquote() << "cannot change to theme" << path << (theme ? ": no such file" : ": no theme");
        return false;
    }
    QSettings settings(path, QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    theme->readSettings(settings);
    return true;
}

QString findStyleSheet(Theme *theme, const QString &folder, const QString &prefix)
{
    QStringList files = sheetsIn(folder);
    if (files.isEmpty())
        files = sheetsIn(QStringLiteral(":/%1/theme/%2").arg(prefix, QFileInfo(folder).fileName()));
    if (files.isEmpty())
        return QString();
    QString sheet;
    readStyleSheet(files, sheet);
    replaceStyleSheet(theme, prefix, sheet);
    return sheet;
}

} // namespace ZT
