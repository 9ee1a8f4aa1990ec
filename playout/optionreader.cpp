#include "optionreader.h"

#include "hostkit/optionrules.h"
#include "optionhelp.h"
#include "optionlist.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace tavro::playout {

namespace {

// What may stand in the INI file.
QStringList fileNames()
{
    QStringList names;
    for (const OptionInfo &each : settingInfos())
        names += each.name;
    for (const runtime::NatsSetting &each : runtime::natsSettings())
        names += each.iniName();
    return names;
}

} // namespace

OptionReader::OptionReader(runtime::SettingLookup environment, const QString &standardConfig)
    : m_environment(std::move(environment))
    , m_standardConfig(standardConfig)
{
    addOptions(m_parser, standardConfig);
}

std::optional<Options> OptionReader::read(const QStringList &arguments)
{
    if (!m_parser.parse(arguments)) {
        fail(m_parser.errorText());
        return std::nullopt;
    }
    if (m_parser.isSet(QStringLiteral("help"))) {
        m_text = helpText(m_parser);
        return std::nullopt;
    }
    if (m_parser.isSet(QStringLiteral("version"))) {
        m_text = QCoreApplication::applicationName() + QLatin1Char(' ') + QCoreApplication::applicationVersion()
            + QLatin1Char('\n');
        return std::nullopt;
    }
    readFile();
    Options options = readAll();
    return m_wrong ? std::nullopt : std::optional(std::move(options));
}

void OptionReader::readFile()
{
    const bool isGiven = m_parser.isSet(QStringLiteral("config"));
    m_config = isGiven ? m_parser.value(QStringLiteral("config")) : m_standardConfig;
    if (!isGiven && !QFileInfo::exists(m_config))
        return;
    if (!m_file.read(m_config, fileNames()))
        fail(m_file.error());
}

Options OptionReader::readAll()
{
    if (!m_parser.positionalArguments().isEmpty())
        fail(QStringLiteral("not understood: %1").arg(m_parser.positionalArguments().constFirst()));
    Options options;
    options.service = service();
    options.token = headerValue(QStringLiteral("token"));
    options.userId = headerValue(QStringLiteral("user-id"));
    options.node = headerValue(QStringLiteral("node"));
    options.timeout = seconds(QStringLiteral("timeout"));
    options.tick = seconds(QStringLiteral("tick"));
    options.mediaFolder = path(QStringLiteral("media"), hostkit::problemOfFolder);
    options.language = value(settingInfo(QStringLiteral("language")));
    options.themeFile = path(QStringLiteral("theme"), hostkit::problemOfTheme);
    options.role = role();
    options.nats = nats();
    options.scriptFile = script();
    options.settingsFile = QFileInfo(m_config).absoluteFilePath();
    options.givenBy = givers();
    return options;
}

std::optional<QString> OptionReader::environmentValue(const OptionInfo &info) const
{
    return info.environment.isEmpty() ? std::nullopt : m_environment(info.environment);
}

QString OptionReader::value(const OptionInfo &info) const
{
    if (m_parser.isSet(info.name))
        return m_parser.value(info.name);
    const std::optional<QString> fromEnvironment = environmentValue(info);
    return fromEnvironment ? *fromEnvironment : m_file.value(info.name).value_or(info.preset);
}

QHash<QString, QString> OptionReader::givers() const
{
    QHash<QString, QString> givers;
    for (const OptionInfo &each : settingInfos()) {
        if (m_parser.isSet(each.name))
            givers.insert(each.name, QStringLiteral("--%1 on the command line").arg(each.name));
        else if (environmentValue(each))
            givers.insert(each.name, QStringLiteral("%1 in the environment").arg(each.environment));
    }
    return givers;
}

void OptionReader::check(const QString &name, const QString &problem, const QString &value)
{
    if (!problem.isEmpty())
        fail(QStringLiteral("%1 %2: %3").arg(name, problem, value));
}

QString OptionReader::headerValue(const QString &name)
{
    const QString text = value(settingInfo(name));
    // The value itself would break the message.
    if (const QString problem = hostkit::problemOfHeaderValue(text); !problem.isEmpty())
        fail(name + QLatin1Char(' ') + problem);
    return text;
}

QString OptionReader::service()
{
    const QString name = QStringLiteral("service");
    const QString address = value(settingInfo(name));
    check(name, hostkit::problemOfService(address), address);
    return hostkit::withoutEndSlash(address);
}

QString OptionReader::path(const QString &name, QString (*problemOf)(const QString &path))
{
    const QString preset = settingInfo(name).preset;
    QString path = m_parser.isSet(name) ? m_parser.value(name) : m_file.path(name).value_or(preset);
    if (path != preset && !(path.isEmpty() && problemOf == hostkit::problemOfFolder))
        check(name, problemOf(path), path);
    return path;
}

QString OptionReader::script()
{
    const QString name = QStringLiteral("script");
    if (!m_parser.isSet(name))
        return {};
    QString file = m_parser.value(name);
    check(name, hostkit::problemOfFile(file), file);
    return file;
}

Role OptionReader::role()
{
    const QString name = value(settingInfo(QStringLiteral("role")));
    const std::optional<Role> role = roleNamed(name);
    if (!role)
        fail(QStringLiteral("role is none of all, local, server and client: %1").arg(name));
    return role.value_or(Role::All);
}

runtime::NatsOptions OptionReader::nats()
{
    const auto file = [this](const QString &name) {
        return name.endsWith(QLatin1String("/ca-file")) ? m_file.path(name) : m_file.value(name);
    };
    QString problem;
    runtime::NatsOptions options = runtime::readNatsOptions(m_parser, m_environment, file, problem);
    if (!problem.isEmpty())
        fail(problem);
    return options;
}

std::chrono::seconds OptionReader::seconds(const QString &name)
{
    const QString given = value(settingInfo(name));
    check(name, hostkit::problemOfSeconds(given), given);
    return std::chrono::seconds(given.toInt());
}

// The first error is the one that is told.
void OptionReader::fail(const QString &why)
{
    if (!m_wrong)
        m_text = why;
    m_wrong = true;
}

} // namespace tavro::playout
