#include "builtin/builtinengine.h"
#include "options.h"
#include "servicelog.h"
#include "stopsignals.h"

#include <QCoreApplication>

#include <cstdio>
#include <thread>

using namespace tavro::assistantservice;

namespace {

void print(FILE *file, const QString &text)
{
    std::fputs(text.toUtf8().constData(), file);
    std::fflush(file);
}

int run(Options options)
{
    options.assistant.ownUrl = httpUrl(options.listen.host, options.listen.port);
    Assistant assistant(options.assistant, std::make_unique<BuiltinEngine>());
    HttpServer server(options.http, assistant);
    const int port = server.bind(options.listen.host.toStdString(), options.listen.port);
    if (port == 0) {
        print(stderr,
              QStringLiteral("assistantservice cannot listen on %1: the address is in use or not this machine's.\n")
                  .arg(options.assistant.ownUrl));
        return 1;
    }
    std::thread serving([&server] { server.serve(); });
    print(stdout, QStringLiteral("assistantservice listening on %1\n").arg(httpUrl(options.listen.host, port)));
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
    const QByteArray token = qgetenv("ASSISTANTSERVICE_TOKEN");
    const QCoreApplication application(argc, argv);
    const OptionsResult result = readOptions(QCoreApplication::arguments(), token);
    if (!result.run) {
        print(result.exitCode == 0 ? stdout : stderr, result.text);
        return result.exitCode;
    }
    setLogLevel(result.options.logLevel);
    holdStopSignals();
    return run(result.options);
}
