#include "view/settingschoices.h"

#include <QComboBox>
#include <QDir>
#include <QSettings>

#include <algorithm>

namespace tavro::playout {

namespace {

struct Language {
    QString name;
    QString ownName;
};

const QVector<Language> &knownLanguages()
{
    static const QVector<Language> known{
        {QStringLiteral("en"), QStringLiteral("English")},     {QStringLiteral("korean"), QStringLiteral("한국어")},
        {QStringLiteral("rus"), QStringLiteral("Русский")},    {QStringLiteral("zh_CN"), QStringLiteral("简体中文")},
        {QStringLiteral("zh_TW"), QStringLiteral("繁體中文")},
    };
    return known;
}

QString themeFolder()
{
    return QStringLiteral(":/aiassistant/theme");
}

QString themeName(const QString &path)
{
    QSettings theme(path, QSettings::IniFormat);
    theme.setIniCodec("UTF-8");
    return theme.value(QStringLiteral("ThemeName")).toString();
}

// A closed box of a style sheet shows the entries' list as wide as itself.
QComboBox *makeBox(const char *name)
{
    auto *const box = new QComboBox;
    box->setObjectName(QLatin1String(name));
    return box;
}

void choose(QComboBox &box, const QString &data)
{
    box.setCurrentIndex(std::max(0, box.findData(data)));
}

} // namespace

QComboBox *makeLanguages(const QStringList &more, const QString &current)
{
    QComboBox *const box = makeBox("settingsLanguage");
    for (const Language &each : knownLanguages())
        box->addItem(each.ownName, each.name);
    QStringList others = more;
    others.append(current);
    for (const QString &each : qAsConst(others)) {
        if (!each.isEmpty() && box->findData(each) < 0)
            box->addItem(each, each);
    }
    choose(*box, current);
    return box;
}

QComboBox *makeThemes(const QString &current)
{
    QComboBox *const box = makeBox("settingsTheme");
    const QFileInfoList files = QDir(themeFolder()).entryInfoList({QStringLiteral("*.theme")}, QDir::Files, QDir::Name);
    for (const QFileInfo &each : files)
        box->addItem(themeName(each.filePath()), each.filePath());
    box->addItem(QStringLiteral("From a file"), QString(QLatin1String("")));
    choose(*box, isBuiltInTheme(current) ? current : QString(QLatin1String("")));
    return box;
}

bool isBuiltInTheme(const QString &path)
{
    return path.startsWith(themeFolder() + QLatin1Char('/')) && QFile::exists(path);
}

} // namespace tavro::playout
