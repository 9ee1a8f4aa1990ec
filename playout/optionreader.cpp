#include "optionreader.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QUrl>

namespace tavro::playout {

namespace {

// The controller counts milliseconds in 32 bits.
constexpr int mostSeconds = 2'000'000;

QString description()
{
    return QStringLiteral(
        "A sample playout host: media library, programs with layers, outputs, and the AI assistant beside them.\n\n"
        "The options that take a value, but for --config and --script, may also stand in an INI file as name=value,\n"
        "those that begin with nats- in its group [nats] without that word. There alone, or in the environment, stand\n"
        "the broker's user, password and token (ASSISTANT_NATS_USER, ASSISTANT_NATS_PASSWORD, ASSISTANT_NATS_TOKEN).\n"
        "The command line holds over the environment, which holds over the file.\n\n"
        "Keys: F9 hides and shows the assistant, Ctrl+F searches the media library, Ctrl+1 to Ctrl+4 choose the layer\n"
        "that Return in the library plays on. A script, one step a line, knows:\n"
        "  type TEXT | press KEYS | click NAME | hover NAME | tell NAME | size WIDTH HEIGHT | screenshot FILE | quit\n"
        "  wait SECONDS visible|hidden|enabled|disabled|focused NAME | wait SECONDS text NAME TEXT\n"
        "NAME is a control's object name, or its class. Lines that begin with # are comments.\n\n"
        "Exit status: 0 ended, 1 the script failed, 2 wrong usage.");
}

QCommandLineOption option(const char *name, const char *text, const char *value)
{
    return {QLatin1String(name), QLatin1String(text), QLatin1String(value)};
}

// Those that may also stand in the INI file.
QList<QCommandLineOption> settings()
{
    return {
        option("service", "Address of the AI service (default: http://127.0.0.1:8080).", "URL"),
        option("token",
               "Token for the service. Better given in the environment as ASSISTANT_TOKEN, where other users of the "
               "machine cannot read it.",
               "TOKEN"),
        option("user-id", "User id for the service.", "ID"),
        option("node", "Name of this machine for the service.", "NAME"),
        option("timeout", "How long an answer may take (default: 60).", "SECONDS"),
        option("tick", "How often the service is asked for the answer (default: 1).", "SECONDS"),
        option("media", "Folder with pictures and animations (default: the samples beside the program).", "DIR"),
        option("language", "Language of the assistant: en (the default), korean, rus, zh_CN or zh_TW.", "NAME"),
        option("theme", "Theme file (default: the assistant's own theme).", "FILE"),
        option(
            "role",
            "all (the default): this machine alone, as a serving and a showing machine in one program; local: alone, "
            "with one controller; server: asks the service for the clients, without a panel; client: shows the "
            "panel. Server and clients meet at a NATS broker.",
            "ROLE"),
    };
}

// What may stand in the INI file.
QStringList names(const QList<QCommandLineOption> &options)
{
    QStringList names;
    for (const QCommandLineOption &each : options)
        names += each.names();
    for (const runtime::NatsSetting &each : runtime::natsSettings())
        names += each.iniName();
    return names;
}

bool hasLineBreakOrNul(const QString &value)
{
    return value.contains(QLatin1Char('\n')) || value.contains(QLatin1Char('\r')) || value.contains(QChar::Null);
}

bool isServiceAddress(const QUrl &url)
{
    const bool http = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return url.isValid() && http && !url.host().isEmpty() && !url.hasQuery() && !url.hasFragment();
}

QString samplesFolder()
{
    const QString folder = QCoreApplication::applicationDirPath() + QStringLiteral("/../share/playout/media");
    return QFileInfo(folder).isDir() ? QFileInfo(folder).canonicalFilePath() : QString();
}

} // namespace

OptionReader::OptionReader(runtime::SettingLookup environment, const QString &standardConfig)
    : m_environment(std::move(environment))
    , m_standardConfig(standardConfig)
{
    m_parser.setApplicationDescription(description());
    m_parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
    m_parser.addVersionOption();
    m_parser.addOptions(settings());
    runtime::addNatsOptions(m_parser);
    m_parser.addOption(option("config", "INI file (default: playout.ini in the user's settings folder).", "FILE"));
    m_parser.addOption(option("script", "Play the steps in this file.", "FILE"));
}

std::optional<Options> OptionReader::read(const QStringList &arguments)
{
    if (!m_parser.parse(arguments)) {
        fail(m_parser.errorText());
        return std::nullopt;
    }
    if (m_parser.isSet(QStringLiteral("help"))) {
        m_text = m_parser.helpText();
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
    const QString given = m_parser.value(QStringLiteral("config"));
    const bool isGiven = m_parser.isSet(QStringLiteral("config"));
    if (!isGiven && !QFileInfo::exists(m_standardConfig))
        return;
    if (!m_file.read(isGiven ? given : m_standardConfig, names(settings())))
        fail(m_file.error());
}

Options OptionReader::readAll()
{
    if (!m_parser.positionalArguments().isEmpty())
        fail(QStringLiteral("not understood: %1").arg(m_parser.positionalArguments().first()));
    Options options;
    options.service = service();
    options.token = headerValue(QStringLiteral("token"), token());
    options.userId = headerValue(QStringLiteral("user-id"), text(QStringLiteral("user-id")));
    options.node = headerValue(QStringLiteral("node"), text(QStringLiteral("node")));
    options.timeout = seconds(QStringLiteral("timeout"), 60);
    options.tick = seconds(QStringLiteral("tick"), 1);
    options.mediaFolder = mediaFolder();
    options.language = text(QStringLiteral("language"), QStringLiteral("en"));
    options.themeFile =
        readableFile(QStringLiteral("theme"), QStringLiteral(":/aiassistant/theme/default_aiassistant.theme"));
    // The controller takes the path as Latin-1.
    if (QString::fromLatin1(options.themeFile.toLatin1()) != options.themeFile)
        fail(QStringLiteral("theme has letters in its path that are not in Latin-1: %1").arg(options.themeFile));
    options.role = role();
    options.nats = nats();
    options.scriptFile = readableFile(QStringLiteral("script"), {});
    return options;
}

QString OptionReader::text(const QString &name, const QString &preset) const
{
    return m_parser.isSet(name) ? m_parser.value(name) : m_file.value(name).value_or(preset);
}

QString OptionReader::path(const QString &name, const QString &preset) const
{
    return m_parser.isSet(name) ? m_parser.value(name) : m_file.path(name).value_or(preset);
}

QString OptionReader::token() const
{
    const QString name = QStringLiteral("token");
    return m_parser.isSet(name) ? text(name) : m_environment(QStringLiteral("ASSISTANT_TOKEN")).value_or(text(name));
}

QString OptionReader::headerValue(const QString &name, const QString &value)
{
    if (hasLineBreakOrNul(value))
        fail(QStringLiteral("%1 has a line break in it").arg(name));
    return value;
}

QString OptionReader::service()
{
    QString address = text(QStringLiteral("service"), QStringLiteral("http://127.0.0.1:8080"));
    if (!isServiceAddress(QUrl(address)))
        fail(QStringLiteral("service is not an address like http://127.0.0.1:8080: %1").arg(address));
    // The paths that are put behind it begin with a slash.
    while (address.endsWith(QLatin1Char('/')))
        address.chop(1);
    return address;
}

QString OptionReader::mediaFolder()
{
    QString folder = path(QStringLiteral("media"), samplesFolder());
    const QFileInfo info(folder);
    if (!folder.isEmpty() && !(info.isDir() && info.isReadable()))
        fail(QStringLiteral("media is not a folder that can be read: %1").arg(folder));
    return folder;
}

QString OptionReader::readableFile(const QString &name, const QString &preset)
{
    QString file = path(name, preset);
    const QFileInfo info(file);
    if (file != preset && !(info.isFile() && info.isReadable()))
        fail(QStringLiteral("%1 is not a file that can be read: %2").arg(name, file));
    return file;
}

Role OptionReader::role()
{
    const QString name = text(QStringLiteral("role"), nameOf(Role::All));
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

std::chrono::seconds OptionReader::seconds(const QString &name, int preset)
{
    const QString given = text(name, QString::number(preset));
    bool isNumber = false;
    const int number = given.toInt(&isNumber);
    if (!isNumber || number <= 0 || number > mostSeconds)
        fail(QStringLiteral("%1 takes a whole number of seconds from 1 to %2: %3")
                 .arg(name)
                 .arg(mostSeconds)
                 .arg(given));
    return std::chrono::seconds(number);
}

// The first error is the one that is told.
void OptionReader::fail(const QString &why)
{
    if (!m_wrong)
        m_text = why;
    m_wrong = true;
}

} // namespace tavro::playout
