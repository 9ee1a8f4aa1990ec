#include "environment.h"

#include <QLoggingCategory>
#include <QtGlobal>

#include <fcntl.h>
#include <unistd.h>

namespace tavro::consolehost {

namespace {

void setUnlessSet(const char *name, const char *value)
{
    if (!qEnvironmentVariableIsSet(name))
        qputenv(name, value);
}

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// Started with a closed standard stream, the program would get its number for the next file that it opens, and then
// read or write there.
void fillStandardStreams()
{
    int file = open("/dev/null", O_RDWR);
    while (file >= 0 && file <= STDERR_FILENO)
        file = dup(file);
    if (file > STDERR_FILENO)
        close(file);
}

} // namespace

void prepareEnvironment()
{
    fillStandardStreams();
    if (!hasDisplay())
        setUnlessSet("QT_QPA_PLATFORM", "offscreen");
    setUnlessSet("ZLSPDLOG_LEVEL", "warning");
    // QT_LOGGING_RULES in the environment holds over this.
    QLoggingCategory::setFilterRules(QStringLiteral("zvaiassistant.*.debug=false"));
}

} // namespace tavro::consolehost
