#include "theme/theme.h"

#include "common/loggingcategories.h"
#include "theme/themenames.h"

#include <QApplication>

namespace tavro::aiassistant {

Theme::Theme(const QString &name, QObject *parent)
    : ZT::Theme(name, parent)
{ }

Theme::~Theme() = default;

void changeTheme(ZT::Theme *theme, const QString &a, const QString &b)
{
    ZT::changeTheme(theme, a, b, themenames::group());
}

void changeAppStyleSheet(ZT::Theme *theme, const QString &a, const QString &b)
{
    changeTheme(theme, a, b);
    auto *const application = qobject_cast<QApplication *>(QCoreApplication::instance());
    if (!application) {
        qCWarning(lcTheme) << "no QApplication is running, so no style sheet is set";
        return;
    }
    const QString sheet = ZT::findStyleSheet(theme, themenames::applicationSheets(), themenames::prefix());
    // Setting an equal sheet costs as much as a new one.
    if (application->styleSheet() != sheet)
        application->setStyleSheet(sheet);
}

} // namespace tavro::aiassistant
