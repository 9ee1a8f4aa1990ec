#include "environment.h"

#include <QLoggingCategory>
#include <QtGlobal>

namespace tavro::playout {

namespace {

constexpr char platformVariable[] = "QT_QPA_PLATFORM";
constexpr char offscreen[] = "offscreen";

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

bool platformChosen = false;

} // namespace

void prepareEnvironment()
{
    platformChosen = !qEnvironmentVariableIsEmpty(platformVariable);
    if (!platformChosen && !hasDisplay())
        qputenv(platformVariable, offscreen);
    if (!qEnvironmentVariableIsSet("ZLSPDLOG_LEVEL"))
        qputenv("ZLSPDLOG_LEVEL", "warning");
    // QT_LOGGING_RULES in the environment holds over this.
    QLoggingCategory::setFilterRules(QStringLiteral("zvaiassistant.*.debug=false"));
}

bool canShowWindows()
{
    return platformChosen || hasDisplay();
}

} // namespace tavro::playout
