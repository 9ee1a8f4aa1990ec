#include "panelsupport.h"

#include "support/logcatcher.h"
#include "theme/stylesheetbuilder.h"
#include "translate/translatemanager.h"

#include <QDir>
#include <QWidget>

namespace tavro::testsupport {

using namespace tavro::aiassistant;

namespace {

bool loadTexts()
{
    QStringList files;
    for (const QString &folder :
         {QStringLiteral(":/aiassistant/language"), QStringLiteral(":/aiassistant/accessibility")}) {
        const QStringList names = QDir(folder).entryList(QDir::Files);
        for (const QString &name : names)
            files << folder + QLatin1Char('/') + name;
    }
    TranslateManager::instance().loadLanguageFiles(files);
    return true;
}

} // namespace

QString complaintsOf(const LogCatcher &log)
{
    QStringList complaints;
    const QStringList all = log.complaints();
    for (const QString &complaint : all) {
        if (!complaint.contains(QLatin1String("This plugin does not support ")))
            complaints << complaint;
    }
    return complaints.join(QLatin1Char('\n'));
}

void useLanguage(const QString &language)
{
    static const bool loaded = loadTexts();
    Q_UNUSED(loaded)
    TranslateManager::instance().switchLanguage(language);
}

QString defaultStyleSheet()
{
    return finishedStyleSheet(*readTheme(":/aiassistant/theme/default_aiassistant.theme"));
}

QStringList declaredMethods(const QMetaObject &meta, QMetaMethod::MethodType type)
{
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        if (method.methodType() != type)
            continue;
        const QByteArray names = method.parameterNames().join(',');
        methods << QString::fromLatin1(method.methodSignature() + (names.isEmpty() ? "" : " ") + names);
    }
    return methods;
}

QRect placeIn(const QWidget *ancestor, const QWidget *widget)
{
    return {widget->mapTo(ancestor, QPoint(0, 0)), widget->size()};
}

} // namespace tavro::testsupport
