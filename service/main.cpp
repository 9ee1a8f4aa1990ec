#include "openai/openaiengine.h"
#include "options.h"
#include "servicelog.h"
#include "stopsignals.h"

#include <QCoreApplication>

#include <cerrno>
#include <cstdio>
#include <thread>

using namespace tavro::assistantservice;

namespace {

void print(FILE *file, const QString &text)
{
    std::fputs(text.toUtf8().constData(), file);
    std::fflush(file);
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
    const QString &host = options.listen.host;
    const bool local =
        host == QLatin1String("localhost") || host == QLatin1String("::1") || host.startsWith(QLatin1String("127."));
    if (!local && options.assistant.token.isEmpty()) {
        serviceLog().warn("event=no-token text=\"anyone who reaches this address may use the service\"");
    }
}

std::unique_ptr<Engine> makeEngine(const Options &options)
{
    if (options.upstream) {
        return std::make_unique<OpenAiEngine>(options.upstream->chat, options.upstream->pictures);
    }
    return std::make_unique<BuiltinEngine>();
}

int run(const Options &options)
{
    Assistant assistant(options.assistant, makeEngine(options));
    HttpServer server(options.http, assistant);
    errno = 0;
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
    std::thread serving([&server] { server.serve(); });
    print(stdout, QStringLiteral("assistantservice listening on %1\n").arg(url));
    const int signal = waitForStopSignal();
    serviceLog().info("event=stopping signal={}", signal);
    assistant.stop();
    server.stop();
    serving.join();
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    // A signal that comes early waits, so that it ends the service like any other.
    holdStopSignals();
    const Environment environment{qgetenv("ASSISTANTSERVICE_TOKEN"),
                                  {qgetenv("ASSISTANTSERVICE_UPSTREAM_KEY"), qgetenv("ASSISTANTSERVICE_PICTURE_KEY")}};
    const QCoreApplication application(argc, argv);
    const OptionsResult result = readOptions(QCoreApplication::arguments(), environment);
    if (!result.run) {
        print(result.exitCode == 0 ? stdout : stderr, result.text);
        return result.exitCode;
    }
    setLogLevel(result.options.logLevel);
    return run(result.options);
}
