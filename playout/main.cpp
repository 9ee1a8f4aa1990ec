#include "host.h"
#include "hostkit/environment.h"
#include "hostkit/stopsignals.h"
#include "optionreader.h"
#include "panel.h"
#include "script/scriptparser.h"
#include "script/scriptplayer.h"
#include "view/mainwindow.h"

#include <QApplication>
#include <QFile>
#include <QStandardPaths>

#include <cstdio>

using namespace tavro::hostkit;
using namespace tavro::playout;

namespace {

enum ExitStatus { Ended = 0, ScriptFailed = 1, WrongUsage = 2 };

void print(FILE *file, const QString &text)
{
    std::fputs(text.toUtf8().constData(), file);
    std::fflush(file);
}

void complain(const QString &text)
{
    print(stderr, QStringLiteral("playout: %1\n").arg(text));
}

int explain(const OptionReader &reader)
{
    if (!reader.isWrong()) {
        print(stdout, reader.text());
        return Ended;
    }
    complain(reader.text());
    complain(QStringLiteral("--help lists the options"));
    return WrongUsage;
}

// False where the script is not to be played; the errors are then told.
bool readScript(const QString &path, Script &script)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        complain(QStringLiteral("%1 cannot be read").arg(path));
        return false;
    }
    const QByteArray bytes = file.readAll();
    script = parseScript(QString::fromUtf8(bytes.constData(), bytes.size()));
    for (const QString &error : qAsConst(script.errors))
        complain(QStringLiteral("%1, %2").arg(path, error));
    return script.errors.isEmpty();
}

int run(const Options &options, const Script &script)
{
    Host host(options, makePanel);
    ScriptPlayer player(script.steps, host.window());
    QObject::connect(&player, &ScriptPlayer::sigQuit, qApp, &QCoreApplication::quit);
    QObject::connect(&player, &ScriptPlayer::sigTold, qApp,
                     [](const QString &line) { print(stdout, line + QLatin1Char('\n')); });
    QObject::connect(&player, &ScriptPlayer::sigFailed, qApp, [&options](const QString &why) {
        complain(QStringLiteral("%1, %2").arg(options.scriptFile, why));
        QCoreApplication::exit(ScriptFailed);
    });
    const StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::sigReceived, qApp, &QCoreApplication::quit);
    host.window().show();
    host.window().activateWindow();
    player.start();
    return QCoreApplication::exec();
}

std::optional<QString> environmentValue(const QString &name)
{
    const QByteArray variable = name.toLatin1();
    if (qEnvironmentVariableIsEmpty(variable.constData()))
        return std::nullopt;
    return qEnvironmentVariable(variable.constData());
}

QString configPath(const QString &name)
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QLatin1Char('/') + name;
}

} // namespace

int main(int argc, char *argv[])
{
    prepareEnvironment();
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    const QStringList arguments = toStrings(argc, argv);
    // Qt gets the program's name only: it would take some options for itself.
    int nameOnly = 1;
    const QApplication application(nameOnly, argv);
    QCoreApplication::setApplicationName(QStringLiteral("playout"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PLAYOUT_VERSION));

    OptionReader reader(environmentValue, configPath(QStringLiteral("playout.ini")));
    auto options = reader.read(arguments);
    if (!options)
        return explain(reader);
    Script script;
    if (!options->scriptFile.isEmpty() && !readScript(options->scriptFile, script))
        return WrongUsage;
    if (options->scriptFile.isEmpty() && options->role != Role::Server && !canShowWindows()) {
        complain(QStringLiteral(
            "there is no display to show the window on; without one, only a server runs, or a script is played"));
        return WrongUsage;
    }
    // A script's pictures are not to depend on what the operator did last.
    if (options->scriptFile.isEmpty() && canShowWindows())
        options->layoutFile = configPath(QStringLiteral("layout.ini"));
    const int status = run(*options, script);
    // What the controller left to the event loop, which does not run any more.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return status;
}
