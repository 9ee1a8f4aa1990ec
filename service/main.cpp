#include "linewriting.h"
#include "openai/openaiengine.h"
#include "options.h"
#include "servicelog.h"
#include "stopsignals.h"
#include "tokenfile.h"

#include <QCoreApplication>

#include <cerrno>
#include <cstdio>
#include <exception>
#include <new>
#include <unistd.h>

using namespace tavro::assistantservice;

namespace {

// Waits until it is read: for a text with which the program ends.
void print(FILE *file, const QString &text)
{
    std::fputs(text.toUtf8().constData(), file);
    std::fflush(file);
}

void printLine(int descriptor, const QString &line)
{
    const QByteArray bytes = line.toUtf8();
    writeWithoutWaiting(descriptor, bytes.constData(), static_cast<size_t>(bytes.size()));
}

QString whyNotListening(int error)
{
    switch (error) {
    case EACCES:
    case EPERM:
        return QStringLiteral("this user may not use the port");
    case EADDRINUSE:
        return QStringLiteral("the address is in use");
    case EADDRNOTAVAIL:
        return QStringLiteral("the address is not this machine's");
    default:
        return QStringLiteral("the address is unknown, in use or not this machine's");
    }
}

void warnWithoutToken(const Options &options)
{
    if (!isLoopback(options.names.listenHost) && options.assistant.token.isEmpty()) {
        serviceLog().warn("event=no-token text=\"anyone who reaches this address may use the service\"");
    }
}

std::unique_ptr<Engine> makeEngine(const Options &options)
{
    if (options.upstream) {
        auto engine = std::make_unique<OpenAiEngine>(options.upstream->chat, options.upstream->pictures);
        engine->begin();
        return engine;
    }
    return std::make_unique<BuiltinEngine>();
}

// False where there is no token to be had.
bool settleToken(Options &options)
{
    if (options.tokenFile.isEmpty()) {
        return true;
    }
    const KeptToken kept = readOrMakeToken(options.tokenFile);
    if (!kept.error.isEmpty()) {
        print(stderr, kept.error + QStringLiteral(" --token-file names another one, --no-token lets everybody in.\n"));
        return false;
    }
    if (kept.isNew) {
        printLine(STDERR_FILENO, newTokenText(kept, options.tokenFile, !isJournal(STDERR_FILENO)));
    }
    options.assistant.token = kept.token;
    return true;
}

int run(const Options &options)
{
    Assistant assistant(options.assistant, makeEngine(options));
    HttpServer server(options.http, assistant);
    const int port = server.bind(options.listen.host.toStdString(), options.listen.port);
    if (port == 0) {
        print(stderr,
              QStringLiteral("assistantservice cannot listen on %1: %2.\n")
                  .arg(httpUrl(options.listen.host, options.listen.port), whyNotListening(errno)));
        return 1;
    }
    const QString url = httpUrl(options.listen.host, port);
    assistant.setOwnUrl(url);
    warnWithoutToken(options);
    if (!server.start(CallerRules(options.names))) {
        printLine(STDERR_FILENO, QStringLiteral("assistantservice cannot start: %1.\n").arg(qt_error_string(errno)));
        return 1;
    }
    printLine(STDOUT_FILENO, QStringLiteral("assistantservice listening on %1\n").arg(url));
    const int signal = waitForStopSignal();
    serviceLog().info("event=stopping signal={}", signal);
    assistant.stop();
    server.stop();
    return 0;
}

int readOptionsAndRun(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    OptionsResult result = readOptions(QCoreApplication::arguments(), readEnvironment());
    if (!result.run) {
        print(result.exitCode == 0 ? stdout : stderr, result.text);
        return result.exitCode;
    }
    setLogLevel(result.options.logLevel);
    return settleToken(result.options) ? run(result.options) : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    // A signal that comes early waits, so that it ends the service like any other.
    holdStopSignals();
    try {
        return readOptionsAndRun(argc, argv);
    } catch (const std::bad_alloc &) {
        std::fputs("assistantservice cannot run: there is not enough memory for it.\n", stderr);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "assistantservice cannot run: %s. The system may have no threads or files left for it.\n",
                     error.what());
    }
    return 1;
}
