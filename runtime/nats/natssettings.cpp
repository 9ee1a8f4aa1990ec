#include "nats/natssettings.h"

#include <QCommandLineParser>

#include <utility>

namespace tavro::runtime {

namespace {

NatsSetting setting(const char *key, const char *valueName, const char *text)
{
    return {QLatin1String(key), QLatin1String(text), QLatin1String(valueName), false};
}

NatsSetting secret(const char *key, const char *text)
{
    return {QLatin1String(key), QLatin1String(text), {}, true};
}

class Values {
public:
    Values(const QCommandLineParser &commandLine, const SettingLookup &environment, const SettingLookup &file)
        : m_commandLine(commandLine)
        , m_environment(environment)
        , m_file(file)
    { }

    QString value(const char *key, const QString &preset = {}) const
    {
        const NatsSetting plain{QLatin1String(key), {}, {}, false};
        if (m_commandLine.isSet(plain.optionName()))
            return m_commandLine.value(plain.optionName());
        return m_file(plain.iniName()).value_or(preset);
    }

    QString secretValue(const char *key) const
    {
        const NatsSetting hidden{QLatin1String(key), {}, {}, true};
        const std::optional<QString> fromEnvironment = m_environment(hidden.environmentName());
        return fromEnvironment ? *fromEnvironment : m_file(hidden.iniName()).value_or(QString());
    }

private:
    const QCommandLineParser &m_commandLine;
    const SettingLookup &m_environment;
    const SettingLookup &m_file;
};

QStringList addresses(const QString &list)
{
    const QStringList parts = list.split(QLatin1Char(','), Qt::SkipEmptyParts);
    QStringList servers;
    for (const QString &server : parts)
        servers += server.trimmed();
    return servers;
}

bool yesOrNo(const QString &value, QString &problem)
{
    if (value != QLatin1String("yes") && value != QLatin1String("no"))
        problem = QStringLiteral("tls is neither yes nor no: %1").arg(value);
    return value == QLatin1String("yes");
}

bool hasCredentials(const QStringList &servers)
{
    for (const QString &server : servers) {
        if (withoutCredentials(server) != server)
            return true;
    }
    return false;
}

} // namespace

QString NatsSetting::iniName() const
{
    return QStringLiteral("nats/") + key;
}

QString NatsSetting::optionName() const
{
    return isSecret ? QString() : QStringLiteral("nats-") + key;
}

QString NatsSetting::environmentName() const
{
    return isSecret ? QStringLiteral("ASSISTANT_NATS_") + key.toUpper() : QString();
}

const QVector<NatsSetting> &natsSettings()
{
    static const QVector<NatsSetting> settings{
        setting("servers", "URLS",
                "Addresses of the NATS brokers, with commas between (default: nats://127.0.0.1:4222)."),
        setting("prefix", "NAME", "First part of the subjects (default: zvaiassistant)."),
        setting("group", "NAME", "Machines of one group share an assistant (default: default)."),
        setting("machine", "NAME", "Name of this machine for the others (default: the host's name)."),
        setting("tls", "yes|no", "Insist on an encrypted connection (default: no)."),
        setting("ca-file", "FILE", "Authorities that may vouch for the broker, as PEM (default: the system's)."),
        secret("user", "User at the broker."),
        secret("password", "Password at the broker."),
        secret("token", "Token at the broker, in place of user and password."),
    };
    return settings;
}

void addNatsOptions(QCommandLineParser &parser)
{
    for (const NatsSetting &each : natsSettings()) {
        if (!each.isSecret)
            parser.addOption({each.optionName(), each.text, each.valueName});
    }
}

NatsOptions readNatsOptions(const QCommandLineParser &commandLine, const SettingLookup &environment,
                            const SettingLookup &file, QString &problem)
{
    const Values values(commandLine, environment, file);
    NatsOptions options;
    options.servers = addresses(values.value("servers", options.servers.join(QLatin1Char(','))));
    options.prefix = values.value("prefix", options.prefix);
    options.group = values.value("group", options.group);
    options.machine = values.value("machine");
    options.caFile = values.value("ca-file");
    options.user = values.secretValue("user");
    options.password = values.secretValue("password");
    options.token = values.secretValue("token");
    problem.clear();
    options.tls = yesOrNo(values.value("tls", QStringLiteral("no")), problem);
    if (problem.isEmpty() && hasCredentials(options.servers))
        problem = QStringLiteral("credentials belong into the environment or the INI file, not into an address");
    if (problem.isEmpty())
        problem = problemOf(options);
    return options;
}

} // namespace tavro::runtime
