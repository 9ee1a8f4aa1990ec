#include "options.h"

#include "optionvalues.h"
#include "servicelog.h"
#include "tokenoptions.h"

#include <QCommandLineParser>
#include <QRegularExpression>
#include <QUrl>

namespace tavro::assistantservice {

namespace {

constexpr int badOptions = 2;
constexpr qint64 mebibyte = 1024 * 1024;

void addOptions(QCommandLineParser &parser)
{
    const auto add = [&parser](const char *name, const char *description, const char *value, const char *standard) {
        parser.addOption(
            {QLatin1String(name), QLatin1String(description), QLatin1String(value), QLatin1String(standard)});
    };
    add("listen", "Address and port to listen on, such as 127.0.0.1:8080, [::1]:8080 or myhost:0 (any free port).",
        "address:port", "127.0.0.1:8080");
    addTokenOptions(parser);
    add("allow-host", "Another name (NAME or NAME:PORT) under which clients reach the service; may come several times.",
        "name", "");
    add("engine", "What answers: builtin (rules, without a model) or openai (an OpenAI-compatible server).", "name",
        "builtin");
    addUpstreamOptions(parser);
    add("public-url", "Start of the pictures' addresses; without it the address that the client used.", "url", "");
    add("work-ms", "Milliseconds that a request takes at least.", "ms", "0");
    add("workers", "Requests that are worked on at once.", "count", "2");
    add("queue", "Requests that may be unfinished at once; more are refused.", "count", "64");
    add("max-body", "Largest request body, in MiB.", "MiB", "32");
    add("max-picture", "Largest picture, in pixels.", "WxH", "7680x4320");
    add("keep-seconds", "How long results and pictures are kept.", "seconds", "600");
    add("picture-memory", "Memory for kept pictures, in MiB; the oldest go first.", "MiB", "512");
    add("client-seconds", "How long a client may take to send a request, and to take a reply.", "seconds", "30");
    add("log-level", "Which lines are logged: debug, info, warning, error or off.", "level", "info");
}

ListenAddress readListen(OptionValues &values)
{
    const std::optional<ListenAddress> address = parseListenAddress(values.text("listen"));
    if (!address) {
        values.fail("listen", QStringLiteral("must be ADDRESS:PORT, with an IPv6 address in brackets"));
    }
    return address.value_or(ListenAddress());
}

QSize readLargestPicture(OptionValues &values, const QSize &smallest)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]{1,5})x([0-9]{1,5})$"));
    const QRegularExpressionMatch match = form.match(values.text("max-picture"));
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    constexpr int largestSide = 16384;
    if (size.width() < smallest.width() || size.height() < smallest.height() || size.width() > largestSide
        || size.height() > largestSide) {
        values.fail("max-picture", QStringLiteral("must be WIDTHxHEIGHT, from 16x16 to 16384x16384"));
    }
    return size;
}

QString readPublicUrl(OptionValues &values)
{
    QString text = values.text("public-url");
    const QUrl url(text, QUrl::StrictMode);
    const bool web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    if (!text.isEmpty() && (!url.isValid() || !web || url.host().isEmpty() || url.hasQuery() || url.hasFragment())) {
        values.fail("public-url", QStringLiteral("must be an address such as https://assistant.example"));
    }
    while (text.endsWith(QLatin1Char('/'))) {
        text.chop(1);
    }
    return text;
}

// As clients send a name with letters beyond ASCII.
Authority readAllowedHost(OptionValues &values, const QString &text)
{
    const QString name = text.section(QLatin1Char(':'), 0, 0);
    const std::optional<Authority> authority = parseAuthority(QUrl::toAce(name) + text.mid(name.size()).toLatin1());
    if (!authority) {
        values.fail("allow-host", QStringLiteral("must be a name such as assistant.example or assistant.example:8443"));
    }
    return authority.value_or(Authority());
}

ServiceNames readNames(OptionValues &values, const Options &options, const QByteArray &machine)
{
    ServiceNames names{options.listen.host.toLatin1(), machine, {}};
    const QStringList texts = values.texts("allow-host");
    for (const QString &text : texts) {
        names.others.append(readAllowedHost(values, text));
    }
    const QString publicHost = QUrl(options.assistant.publicUrl).host(QUrl::FullyEncoded);
    if (!publicHost.isEmpty()) {
        names.others.append({publicHost.toLatin1(), 0});
    }
    return names;
}

void readStoreLimits(OptionValues &values, StoreLimits &limits)
{
    limits.work = std::chrono::milliseconds(values.number("work-ms", 0, 3600000));
    limits.unfinished = values.number("queue", 1, 10000);
    limits.keep = std::chrono::seconds(values.number("keep-seconds", 1, 86400));
    limits.pictureBytes = values.number("picture-memory", 1, 65536) * mebibyte;
}

void readEngine(OptionValues &values, const UpstreamKeys &keys, Options &options)
{
    const QString engine = values.text("engine");
    if (engine == QLatin1String("openai")) {
        options.upstream = readUpstreamOptions(values, keys);
        return;
    }
    if (engine != QLatin1String("builtin")) {
        values.fail("engine", QStringLiteral("must be builtin or openai"));
    } else if (const char *const option = givenUpstreamOption(values)) {
        values.fail(option, QStringLiteral("goes with --engine openai only"));
    }
}

Options readValues(OptionValues &values, const Environment &environment)
{
    Options options;
    options.listen = readListen(values);
    readEngine(values, environment.upstreamKeys, options);
    options.logLevel = values.text("log-level");
    if (!logLevels().contains(options.logLevel)) {
        values.fail("log-level", QStringLiteral("must be one of %1").arg(logLevels().join(QStringLiteral(", "))));
    }
    AssistantSettings &assistant = options.assistant;
    assistant.publicUrl = readPublicUrl(values);
    assistant.workers = values.number("workers", 1, 64);
    assistant.bodyLimits.largestPicture = readLargestPicture(values, assistant.bodyLimits.smallestPicture);
    readStoreLimits(values, assistant.storeLimits);
    options.names = readNames(values, options, environment.machine);
    const TokenChoice choice = readTokenChoice(values, environment, options.names.listenHost);
    assistant.token = choice.token;
    options.tokenFile = choice.file;
    options.http.largestBody = values.number("max-body", 1, 1024) * mebibyte;
    options.http.clientLimit = std::chrono::seconds(values.number("client-seconds", 1, 3600));
    return options;
}

} // namespace

OptionsResult readOptions(const QStringList &arguments, const Environment &environment)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Answers the questions of the assistant panel over HTTP."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    addOptions(parser);
    const bool parsed = parser.parse(arguments);
    if (!parsed) {
        return {false, {}, parser.errorText() + QLatin1Char('\n'), badOptions};
    }
    if (parser.isSet(help) || parser.isSet(QStringLiteral("help-all"))) {
        return {false, {}, parser.helpText(), 0};
    }
    if (parser.isSet(version)) {
        return {false, {}, QStringLiteral("assistantservice " ASSISTANTSERVICE_VERSION "\n"), 0};
    }
    if (!parser.positionalArguments().isEmpty()) {
        return {
            false, {}, QStringLiteral("Unexpected: %1\n").arg(parser.positionalArguments().constFirst()), badOptions};
    }
    OptionValues values(parser);
    const Options options = readValues(values, environment);
    if (!values.error().isEmpty()) {
        return {false, {}, values.error() + QLatin1Char('\n'), badOptions};
    }
    return {true, options, {}, 0};
}

} // namespace tavro::assistantservice
