#include "playout/playoutprocess.h"
#include "playout/samplefiles.h"
#include "support/natsserver.h"
#include "support/servicescript.h"
#include "support/waiting.h"

#include <QFileInfo>
#include <QImage>
#include <QTest>

using namespace tavro::testsupport;

/// A serving and several showing playouts, each a process of its own, over a real broker: what their operators see.
/// The service is scripted, so that a question can be held while something breaks.
class PlayoutMachinesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void bothPanelsShowTheAnswerAndTheServerPlays();
    void clientThatLostTheBrokerSaysSoAndGoesOn();
    void clientWhoseServerDiedSaysSoAndGoesOn();
    void serverThatIsAskedToEndEnds();
    void clientWithoutABrokerSaysSo();
    void secondServerStandsBy();
    void wrongPasswordIsTold();
    void everyOutcomeReachesThePanel();

private:
    QStringList arguments(const char *role) const;
    void startServer(const QString &script = QStringLiteral("wait 100 text logLines THE END\n"));
    bool hasAsked(int count) const;
    void answer(const QString &text, const QJsonArray &commands = {});

    std::unique_ptr<NatsServer> broker;
    std::unique_ptr<ServiceScript> service;
    std::unique_ptr<PlayoutProcess> server;
};

// QCOMPARE would cut the program's complaint short.
#define VERIFY_ENDED_WELL(failure)                                                                                     \
    do {                                                                                                               \
        const QString why = failure;                                                                                   \
        QVERIFY2(why.isEmpty(), qPrintable(why));                                                                      \
    } while (false)

namespace {

const auto connected = QStringLiteral("wait 60 text statusRuntime connected to the serving machine\n"
                                      "wait 60 hidden stop\n");

QJsonArray playHarbourOnLayer2()
{
    const QJsonObject params{{QStringLiteral("mediaId"), QStringLiteral("harbour clip.gif")},
                             {QStringLiteral("bPlay"), true},
                             {QStringLiteral("layerId"), 2}};
    return {QJsonObject{{QStringLiteral("cmdType"), 0}, {QStringLiteral("params"), params}}};
}

} // namespace

void PlayoutMachinesTest::init()
{
    broker = std::make_unique<NatsServer>();
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    service = std::make_unique<ServiceScript>();
}

void PlayoutMachinesTest::cleanup()
{
    server.reset();
    service.reset();
    broker.reset();
}

QStringList PlayoutMachinesTest::arguments(const char *role) const
{
    return {QStringLiteral("--role"),         QLatin1String(role),
            QStringLiteral("--service"),      service->url(),
            QStringLiteral("--tick"),         QStringLiteral("1"),
            QStringLiteral("--media"),        QStringLiteral(PLAYOUT_SAMPLES),
            QStringLiteral("--nats-servers"), broker->url()};
}

void PlayoutMachinesTest::startServer(const QString &script)
{
    server = std::make_unique<PlayoutProcess>();
    server->start(arguments("server"), script);
}

bool PlayoutMachinesTest::hasAsked(int count) const
{
    return eventually([&] { return service->requestCountTo(ServiceScript::text) == count; }, std::chrono::minutes(1));
}

void PlayoutMachinesTest::answer(const QString &text, const QJsonArray &commands)
{
    service->expectAnswer(text, commands);
}

void PlayoutMachinesTest::bothPanelsShowTheAnswerAndTheServerPlays()
{
    startServer(QStringLiteral("wait 100 text layer2State PLAYING\n"
                               "wait 1 text layer2Media harbour clip\n"
                               "wait 5 text statusService answering\n"
                               "quit\n"));
    answer(QStringLiteral("It plays."), playHarbourOnLayer2());
    PlayoutProcess asking;
    PlayoutProcess watching;
    watching.start(arguments("client"), connected + QStringLiteral("wait 100 text textBrowser It plays.\nquit\n"));
    asking.start(arguments("client"),
                 connected
                     + QStringLiteral("type play the harbour clip on layer 2\n"
                                      "press Return\n"
                                      "wait 60 text textBrowser It plays.\n"
                                      "wait 60 visible sendMsg\n"
                                      "wait 5 text statusService answering\n"
                                      "wait 1 text layer2State EMPTY\n"
                                      "screenshot asked.png\n"
                                      "quit\n"));
    VERIFY_ENDED_WELL(asking.failure());
    VERIFY_ENDED_WELL(watching.failure());
    VERIFY_ENDED_WELL(server->failure());
    QCOMPARE(QImage(asking.path(QStringLiteral("asked.png"))).isNull(), false);
}

void PlayoutMachinesTest::clientThatLostTheBrokerSaysSoAndGoesOn()
{
    startServer();
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("r1")).held());
    PlayoutProcess client;
    client.start(arguments("client"),
                 connected
                     + QStringLiteral("type first\n"
                                      "press Return\n"
                                      "wait 60 text textBrowser The connection to the serving machine was lost.\n"
                                      "wait 60 visible sendMsg\n"
                                      "wait 10 text textBrowser first\n"
                                      "wait 10 text logLines Runtime:\n"
                                      "wait 100 text statusRuntime connected to the serving machine\n"
                                      "type second\n"
                                      "press Return\n"
                                      "wait 60 text textBrowser Here again.\n"
                                      "wait 60 visible sendMsg\n"
                                      "quit\n"));
    QVERIFY(hasAsked(1));
    broker->kill();
    answer(QStringLiteral("Here again."));
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    VERIFY_ENDED_WELL(client.failure());
}

void PlayoutMachinesTest::clientWhoseServerDiedSaysSoAndGoesOn()
{
    startServer();
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("r1")).held());
    PlayoutProcess client;
    client.start(arguments("client"),
                 connected
                     + QStringLiteral(
                         "type first\n"
                         "press Return\n"
                         "wait 60 text textBrowser The connection to the serving machine was lost. Please ask again.\n"
                         "wait 60 visible sendMsg\n"
                         "wait 60 text statusRuntime Runtime: connected, but no machine serves\n"
                         "type second\n"
                         "press Return\n"
                         "wait 60 text textBrowser The question was not sent:\n"
                         "wait 60 visible sendMsg\n"
                         "screenshot told.png\n"
                         "wait 100 text statusRuntime connected to the serving machine\n"
                         "type third\n"
                         "press Return\n"
                         "wait 60 text textBrowser Here again.\n"
                         "wait 60 visible sendMsg\n"
                         "quit\n"));
    QVERIFY(hasAsked(1));
    server->kill();
    QVERIFY(eventually([&] { return QFileInfo::exists(client.path(QStringLiteral("told.png"))); },
                       std::chrono::minutes(2)));
    answer(QStringLiteral("Here again."));
    startServer();
    VERIFY_ENDED_WELL(client.failure());
}

void PlayoutMachinesTest::serverThatIsAskedToEndEnds()
{
    startServer();
    PlayoutProcess client;
    client.start(arguments("client"),
                 connected
                     + QStringLiteral("screenshot there.png\n"
                                      "wait 60 text statusRuntime no machine serves\n"
                                      "quit\n"));
    QVERIFY(eventually([&] { return QFileInfo::exists(client.path(QStringLiteral("there.png"))); },
                       std::chrono::minutes(2)));
    server->terminate();
    VERIFY_ENDED_WELL(server->failure());
    VERIFY_ENDED_WELL(client.failure());
}

void PlayoutMachinesTest::clientWithoutABrokerSaysSo()
{
    broker->kill();
    PlayoutProcess client;
    client.start(arguments("client"),
                 QStringLiteral("type anybody there?\n"
                                "press Return\n"
                                "wait 60 text textBrowser The question was not sent:\n"
                                "wait 60 visible sendMsg\n"
                                "quit\n"));
    VERIFY_ENDED_WELL(client.failure());
}

void PlayoutMachinesTest::secondServerStandsBy()
{
    startServer(QStringLiteral("wait 60 text statusRuntime connected, serving\n"
                               "screenshot serving.png\n"
                               "wait 100 text logLines THE END\n"));
    QVERIFY(eventually([&] { return QFileInfo::exists(server->path(QStringLiteral("serving.png"))); },
                       std::chrono::minutes(2)));
    PlayoutProcess second;
    second.start(arguments("server"),
                 QStringLiteral("wait 60 text statusRuntime standing by\n"
                                "screenshot standing.png\n"
                                "wait 100 text statusRuntime connected, serving\n"
                                "quit\n"));
    QVERIFY(eventually([&] { return QFileInfo::exists(second.path(QStringLiteral("standing.png"))); },
                       std::chrono::minutes(2)));
    server->kill();
    VERIFY_ENDED_WELL(second.failure());
}

void PlayoutMachinesTest::wrongPasswordIsTold()
{
    broker->kill();
    NatsServer::Options locked;
    locked.user = QStringLiteral("studio");
    locked.password = QStringLiteral("right");
    broker->setOptions(locked);
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    PlayoutProcess stranger;
    stranger.setEnvironment(QStringLiteral("ASSISTANT_NATS_USER"), QStringLiteral("studio"));
    stranger.setEnvironment(QStringLiteral("ASSISTANT_NATS_PASSWORD"), QStringLiteral("wrong"));
    stranger.start(arguments("client"), QStringLiteral("wait 60 text statusRuntime refuses this machine\nquit\n"));
    VERIFY_ENDED_WELL(stranger.failure());
    PlayoutProcess known;
    known.setEnvironment(QStringLiteral("ASSISTANT_NATS_USER"), QStringLiteral("studio"));
    known.setEnvironment(QStringLiteral("ASSISTANT_NATS_PASSWORD"), QStringLiteral("right"));
    known.start(arguments("client"), QStringLiteral("wait 60 text statusRuntime connected\nquit\n"));
    VERIFY_ENDED_WELL(known.failure());
}

// Stop, failure and time-out come whole over the messages: each leaves the panel ready for the next question.
void PlayoutMachinesTest::everyOutcomeReachesThePanel()
{
    startServer();
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("r1")));
    service->expect("POST", ServiceScript::text, ServiceScript::refused(QStringLiteral("too busy")));
    service->expect("POST", ServiceScript::text, ScriptedAnswer::status(500));
    service->always("POST", ServiceScript::result, ServiceScript::working());
    PlayoutProcess client;
    client.start(arguments("client"),
                 connected
                     + QStringLiteral("type one\n"
                                      "press Return\n"
                                      "wait 60 visible stop\n"
                                      "wait 60 text textBrowser Thinking\n"
                                      "click stop\n"
                                      "wait 60 visible sendMsg\n"
                                      "type two\n"
                                      "press Return\n"
                                      "wait 60 text textBrowser too busy\n"
                                      "wait 60 visible sendMsg\n"
                                      "type three\n"
                                      "press Return\n"
                                      "wait 60 text textBrowser Request Error\n"
                                      "wait 60 visible sendMsg\n"
                                      "quit\n"));
    VERIFY_ENDED_WELL(client.failure());
    QCOMPARE(service->requestCountTo(ServiceScript::text), 3);
}

QTEST_GUILESS_MAIN(PlayoutMachinesTest)
#include "tst_playoutmachines.moc"
