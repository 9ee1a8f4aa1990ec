#include "optionhelp.h"

#include "nats/natssettings.h"
#include "optionlist.h"

namespace tavro::playout {

namespace {

QString description(const OptionInfo &info)
{
    const QString preset = info.presetText.isEmpty() ? info.preset : info.presetText;
    const QString environment =
        info.environment.isEmpty() ? QString() : QStringLiteral(" Environment: %1.").arg(info.environment);
    return QStringLiteral("%1 (default: %2).%3 INI: %4.").arg(info.text, preset, environment, info.name);
}

QString credentials()
{
    QString lines;
    for (const runtime::NatsSetting &each : runtime::natsSettings()) {
        if (each.isSecret)
            lines += QStringLiteral("  %1 (default: none). INI: %2 in [nats].\n      %3\n")
                         .arg(each.environmentName(), each.key, each.text);
    }
    return lines;
}

QString sections()
{
    return QStringLiteral(R"(
The broker's credentials stand in the environment or the INI file only:
%1
Roles:
  all     this machine alone: a serving and a showing machine in one program
          playout --service http://127.0.0.1:8080
  local   this machine alone, with one controller
          playout --role local
  server  asks the service for the clients of its group, without a panel
          playout --role server --nats-servers nats://nats:4222 --nats-group a
  client  shows the panel; the group's serving machine asks the service
          playout --role client --nats-servers nats://nats:4222 --nats-group a
Server and clients meet at a NATS broker. A server needs no display.

INI file: one name=value a line, the broker's under [nats]:
  service=http://10.0.0.7:8080
  language=zh_CN
  [nats]
  group=a
Relative paths count from the file's folder. The command line holds over the
environment, which holds over the file. The settings dialogue (Ctrl+,) writes
the file, readable for its owner only.

Keys:
  Ctrl+,            settings
  F8, F9            hide and show the log, the assistant
  Ctrl+F            search the media library
  Ctrl+1 to Ctrl+4  choose the layer that Return in the library plays on
  Ctrl+Q            quit

Script: one step a line; lines that begin with # are comments.
  type TEXT                        types where the keyboard is
  press KEYS                       such as Return or Ctrl+A
  click NAME | hover NAME          moves the mouse to a control
  wait SECONDS CONDITION NAME      until it is visible, hidden, enabled,
                                   disabled or focused
  wait SECONDS text NAME TEXT      until it shows the text
  tell NAME                        prints the control as one line of JSON
  size WIDTH HEIGHT                resizes the window
  screenshot FILE                  saves a PNG of the window
  quit                             ends the program
NAME is a control's object name, or its class. Without a display, a script is
played unseen. An example that asks a question and takes a picture:
  type play the harbour clip on layer 2
  press Return
  wait 60 visible sendMsg
  screenshot answer.png
  quit

Other variables: ZLSPDLOG_LEVEL (default: warning), ZLSPDLOG_FILE and
QT_LOGGING_RULES choose what is logged; QT_QPA_PLATFORM=offscreen shows nothing.

Exit status: 0 ended, 1 the script failed, 2 wrong usage.
)")
        .arg(credentials());
}

QCommandLineOption option(const char *name, const QString &text, const char *value)
{
    return {QLatin1String(name), text, QLatin1String(value)};
}

} // namespace

void addOptions(QCommandLineParser &parser, const QString &standardConfig)
{
    parser.setApplicationDescription(QStringLiteral(
        "A sample playout host: media library, programs with layers, outputs, and the\nAI assistant beside them."));
    parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
    parser.addVersionOption();
    for (const OptionInfo &each : settingInfos())
        parser.addOption({each.name, description(each), each.valueName});
    for (const runtime::NatsSetting &each : runtime::natsSettings()) {
        if (!each.isSecret)
            parser.addOption(
                {each.optionName(), QStringLiteral("%1 INI: %2 in [nats].").arg(each.text, each.key), each.valueName});
    }
    parser.addOption(option("config", QStringLiteral("INI file (default: %1).").arg(standardConfig), "FILE"));
    parser.addOption(
        option("script", QStringLiteral("Play the steps in this file (default: none); see below."), "FILE"));
}

QString helpText(const QCommandLineParser &parser)
{
    return parser.helpText() + sections();
}

} // namespace tavro::playout
