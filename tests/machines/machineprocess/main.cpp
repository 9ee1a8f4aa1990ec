#include "lineinput.h"
#include "machine.h"
#include "operations.h"
#include "reporter.h"

#include <QCommandLineParser>
#include <QGuiApplication>

using namespace tavro::machineprocess;
using tavro::runtime::Role;
using tavro::runtime::Roles;

namespace {

constexpr int wrongOption = 2;

void addOptions(QCommandLineParser &parser)
{
    for (const char *name :
         {"role", "broker", "group", "service", "name", "user", "ca-file", "presence-ms", "retry-ms", "standstill-ms"})
        parser.addOption({QLatin1String(name), {}, QStringLiteral("value")});
    parser.addOption(QCommandLineOption(QStringLiteral("ticks-by-hand")));
}

Roles readRoles(const QString &text)
{
    Roles roles;
    roles.setFlag(Role::ProxyServer, text == QLatin1String("server"));
    roles.setFlag(Role::ProxyClient, text == QLatin1String("client"));
    return roles;
}

MachineOptions readOptions(const QCommandLineParser &parser)
{
    const auto value = [&](const char *name) { return parser.value(QLatin1String(name)); };
    MachineOptions options;
    options.roles = readRoles(value("role"));
    options.service = value("service");
    options.ticksByHand = parser.isSet(QStringLiteral("ticks-by-hand"));
    auto &nats = options.nats;
    nats.servers = QStringList{value("broker")};
    nats.group = value("group");
    nats.machine = value("name");
    nats.user = value("user");
    if (!nats.user.isEmpty())
        nats.password = QString::fromLocal8Bit(qgetenv("MACHINEPROCESS_PASSWORD"));
    nats.caFile = value("ca-file");
    nats.tls = parser.isSet(QStringLiteral("ca-file"));
    if (parser.isSet(QStringLiteral("presence-ms")))
        nats.presenceInterval = std::chrono::milliseconds(value("presence-ms").toInt());
    if (parser.isSet(QStringLiteral("standstill-ms")))
        nats.longestStandstill = std::chrono::milliseconds(value("standstill-ms").toInt());
    if (parser.isSet(QStringLiteral("retry-ms")))
        nats.firstRetry = nats.longestRetry = std::chrono::milliseconds(value("retry-ms").toInt());
    return options;
}

int run(const MachineOptions &options)
{
    Machine machine(options);
    Operations operations(machine);
    const tavro::consolehost::LineInput input;
    QObject::connect(&input, &tavro::consolehost::LineInput::sigLine, qApp,
                     [&](const QString &line) { operations.carryOut(line); });
    QObject::connect(&input, &tavro::consolehost::LineInput::sigEnded, qApp, &QCoreApplication::quit);
    const int status = QCoreApplication::exec();
    machine.controller().clear();
    return status;
}

} // namespace

/// One machine for tests: reads what to do as lines of JSON and writes what happens as lines of JSON.
int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("machineprocess"));
    reportLogs();
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(QCoreApplication::arguments()))
        return wrongOption;
    return run(readOptions(parser));
}
