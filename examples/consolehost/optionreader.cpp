#include "optionreader.h"

#include "hostkit/optionrules.h"
#include "pictureratio.h"

#include <QCoreApplication>

namespace tavro::consolehost {

using aiassistant::PictureGenerateInfo;

namespace {

QString description()
{
    return QStringLiteral(
               "Asks the AI service and prints its answers, its pictures and its commands for the host.\n\n"
               "With --ask or --picture, each any number of times, the questions are asked in the order given, in one\n"
               "conversation; the first that is not answered ends the run. Without them lines are read from standard\n"
               "input.\n\n"
               "Results go to standard output, messages to standard error. Exit status: 0 answered, 2 failed or wrong\n"
               "usage, 3 timed out; without --ask and --picture that of the last line, where a stopped question does\n"
               "not count.\n\n")
        + stepHelp()
        + QStringLiteral(
               "\n\nQT_LOGGING_RULES=zvaiassistant.*.debug=true in the environment shows what happens inside.");
}

QCommandLineOption option(const char *name, const char *text, const char *value = "", const QString &preset = {})
{
    return {QLatin1String(name), QLatin1String(text), QLatin1String(value), preset};
}

QList<QCommandLineOption> allOptions()
{
    return {
        option("service", "Address of the service, for example http://127.0.0.1:8080.", "URL"),
        option("token", "Token for the service (default: the environment's ASSISTANT_TOKEN).", "TOKEN"),
        option("user-id", "User id for the service.", "ID"),
        option("node", "Name of this machine for the service.", "NAME"),
        option("media", "Folder with the media library.", "DIR"),
        option("ask", "Ask this question.", "TEXT"),
        option("picture", "Ask for a picture of this description.", "TEXT"),
        option("style", "Style of the pictures, for example Monet or \"Ink Painting\".", "NAME"),
        option("ratio", "Ratio of the pictures: 16:9 (the default), 16:10, 5:4 or 4:3.", "RATIO",
               QStringLiteral("16:9")),
        option("download", "Save each picture as a file."),
        option("deep-model", "Switch the deep model on."),
        option("online-search", "Switch online search on."),
        option("timeout", "How long an answer may take (default: 60).", "SECONDS", QStringLiteral("60")),
        option("tick", "How often the service is asked for the answer (default: 1).", "SECONDS", QStringLiteral("1")),
    };
}

} // namespace

OptionReader::OptionReader()
{
    m_parser.setApplicationDescription(description());
    m_parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
    m_parser.addVersionOption();
    m_parser.addOptions(allOptions());
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
        m_text = QCoreApplication::applicationName() + QLatin1Char(' ') + QCoreApplication::applicationVersion();
        return std::nullopt;
    }
    Options options = readAll();
    return m_wrong ? std::nullopt : std::optional(std::move(options));
}

Options OptionReader::readAll()
{
    if (!m_parser.positionalArguments().isEmpty())
        fail(QStringLiteral("not understood: %1").arg(m_parser.positionalArguments().constFirst()));
    Options options;
    options.service = service();
    options.token = headerValue(QStringLiteral("token"), qEnvironmentVariable("ASSISTANT_TOKEN"));
    options.userId = headerValue(QStringLiteral("user-id"));
    options.node = headerValue(QStringLiteral("node"));
    options.mediaFolder = mediaFolder();
    options.picture = picture();
    options.questions = questions(options.picture);
    options.download = m_parser.isSet(QStringLiteral("download"));
    options.deepModel = m_parser.isSet(QStringLiteral("deep-model"));
    options.onlineSearch = m_parser.isSet(QStringLiteral("online-search"));
    options.timeout = seconds(QStringLiteral("timeout"));
    options.tick = seconds(QStringLiteral("tick"));
    return options;
}

QString OptionReader::service()
{
    const QString option = QStringLiteral("service");
    const QString address = m_parser.value(option);
    if (address.isEmpty())
        fail(QStringLiteral("--service is missing: the address of the service, for example http://127.0.0.1:8080"));
    check(option, hostkit::problemOfService(address), address);
    return hostkit::withoutEndSlash(address);
}

QString OptionReader::headerValue(const QString &option, const QString &fallback)
{
    QString value = m_parser.isSet(option) ? m_parser.value(option) : fallback;
    // The value itself would break the message.
    if (const QString problem = hostkit::problemOfHeaderValue(value); !problem.isEmpty())
        fail(QStringLiteral("--%1 %2").arg(option, problem));
    return value;
}

QString OptionReader::mediaFolder()
{
    const QString option = QStringLiteral("media");
    QString folder = m_parser.value(option);
    if (m_parser.isSet(option))
        check(option, hostkit::problemOfFolder(folder), folder);
    return folder;
}

PictureGenerateInfo OptionReader::picture()
{
    PictureGenerateInfo info;
    info.style = m_parser.value(QStringLiteral("style")).toStdString();
    const QString ratio = m_parser.value(QStringLiteral("ratio"));
    if (!setRatio(info, ratio))
        fail(QStringLiteral("--ratio is none of %1: %2").arg(pictureRatios().join(QStringLiteral(", ")), ratio));
    return info;
}

std::vector<Step> OptionReader::questions(const PictureGenerateInfo &defaults)
{
    QStringList texts = m_parser.values(QStringLiteral("ask"));
    QStringList pictures = m_parser.values(QStringLiteral("picture"));
    std::vector<Step> steps;
    const QStringList namesInOrder = m_parser.optionNames();
    for (const QString &name : namesInOrder) {
        Step step;
        if (name == QLatin1String("ask"))
            step = askStep(texts.takeFirst());
        else if (name == QLatin1String("picture"))
            step = pictureStep(pictures.takeFirst(), defaults);
        else
            continue;
        if (step.kind == Step::Kind::Wrong)
            fail(QStringLiteral("--%1: %2").arg(name, step.text));
        steps.push_back(std::move(step));
    }
    return steps;
}

std::chrono::seconds OptionReader::seconds(const QString &option)
{
    const QString given = m_parser.value(option);
    check(option, hostkit::problemOfSeconds(given), given);
    return std::chrono::seconds(given.toInt());
}

void OptionReader::check(const QString &option, const QString &problem, const QString &value)
{
    if (!problem.isEmpty())
        fail(QStringLiteral("--%1 %2: %3").arg(option, problem, value));
}

// The first error is the one that is told.
void OptionReader::fail(const QString &why)
{
    if (!m_wrong)
        m_text = why;
    m_wrong = true;
}

} // namespace tavro::consolehost
