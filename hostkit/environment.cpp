#include "hostkit/environment.h"

#include <QLoggingCategory>
#include <QtGlobal>

#include <fcntl.h>
#include <unistd.h>

namespace tavro::hostkit {

namespace {

constexpr char platformVariable[] = "QT_QPA_PLATFORM";

bool platformChosen = false;

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
    platformChosen = !qEnvironmentVariableIsEmpty(platformVariable);
    if (!platformChosen && !hasDisplay())
        qputenv(platformVariable, "offscreen");
    if (!qEnvironmentVariableIsSet("ZLSPDLOG_LEVEL"))
        qputenv("ZLSPDLOG_LEVEL", "warning");
    // QT_LOGGING_RULES in the environment holds over this.
    QLoggingCategory::setFilterRules(QStringLiteral("zvaiassistant.*.debug=false"));
}

bool canShowWindows()
{
    return platformChosen || hasDisplay();
}

QStringList toStrings(int count, char *texts[])
{
    QStringList strings;
    for (int i = 0; i < count; ++i)
        strings.append(QString::fromUtf8(texts[i]));
    return strings;
}

} // namespace tavro::hostkit
