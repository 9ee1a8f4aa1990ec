#include "environment.h"

#include <QDir>
#include <QFile>

#include <array>
#include <unistd.h>

namespace tavro::assistantservice {

namespace {

QByteArray machineName()
{
    constexpr size_t longestName = 256;
    std::array<char, longestName + 1> name{};
    return ::gethostname(name.data(), longestName) == 0 ? QByteArray(name.data()) : QByteArray();
}

QString folderIn(const char *variable)
{
    return QFile::decodeName(qgetenv(variable));
}

// systemd makes a folder for the unit and names it; it may name several, with colons between them.
QString stateFolder()
{
    const QString ofTheUnit = folderIn("STATE_DIRECTORY").section(QLatin1Char(':'), 0, 0);
    if (!ofTheUnit.isEmpty()) {
        return ofTheUnit;
    }
    const QString ofTheUser = folderIn("XDG_STATE_HOME");
    if (QDir::isAbsolutePath(ofTheUser)) {
        return ofTheUser + QStringLiteral("/assistantservice");
    }
    const QString home = folderIn("HOME");
    return home.isEmpty() ? QString() : home + QStringLiteral("/.local/state/assistantservice");
}

} // namespace

Environment readEnvironment()
{
    return {qgetenv("ASSISTANTSERVICE_TOKEN"),
            {qgetenv("ASSISTANTSERVICE_UPSTREAM_KEY"), qgetenv("ASSISTANTSERVICE_PICTURE_KEY")},
            machineName(),
            stateFolder()};
}

} // namespace tavro::assistantservice
