#include "serviceclient.h"
#include "support/waiting.h"
#include "upstream.h"

#include <QTest>

#include <csignal>

using tavro::testsupport::eventually;
using tavro::testsupport::ScriptedAnswer;
using tavro::testsupport::ScriptedServer;

namespace {

/// One that is asked for its models at the service's start.
class ListedServer : public ScriptedServer {
public:
    ListedServer() { always("GET", upstream::modelsTarget, ScriptedAnswer::json({})); }
};

} // namespace

/// The program itself between a panel and a model's server.
class OpenAiServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void questionGoesToTheModelAndBack();
    void failureReachesThePanelInWords();
    void keyAndTextsStayOutOfTheLog();
    void stopDoesNotWaitForTheModel();
    void pictureComesFromTheServicesOwnAddress();
    void serverIsLookedAtAtTheStart_data();
    void serverIsLookedAtAtTheStart();
    void healthTellsOfTheServer();
    void keyOnTheOpenNetIsWarnedOf_data();
    void keyOnTheOpenNetIsWarnedOf();

private:
    static QStringList optionsFor(const ScriptedServer &server)
    {
        return {
            QStringLiteral("--engine"), QStringLiteral("openai"), QStringLiteral("--upstream"), server.url(),
            QStringLiteral("--model"),  QStringLiteral("small"),  QStringLiteral("--workers"),  QStringLiteral("4")};
    }
};

void OpenAiServiceTest::questionGoesToTheModelAndBack()
{
    ListedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("Paris.")));
    ServiceProcess service;
    QVERIFY(service.start(optionsFor(server)));
    ServiceClient client(service);
    const QString id = requestIdOf(client.post(paths::text, question("What is the capital of France?")));
    QCOMPARE(firstAnswerOf(client.result(false, id)), QStringLiteral("Paris."));
}

void OpenAiServiceTest::failureReachesThePanelInWords()
{
    ListedServer server;
    server.expect("POST", upstream::chatTarget, upstream::failure(401, QStringLiteral("Invalid API Key")));
    ServiceProcess service;
    QVERIFY(service.start(optionsFor(server)));
    ServiceClient client(service);
    const QString id = requestIdOf(client.post(paths::text, question("Hello")));
    const QJsonObject reply = client.result(false, id);
    QCOMPARE(codeOf(reply), 502);
    QVERIFY2(messageOf(reply).contains(QStringLiteral("does not accept the key")), qPrintable(messageOf(reply)));
}

void OpenAiServiceTest::keyAndTextsStayOutOfTheLog()
{
    ListedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("an answer")));
    ServiceProcess service;
    service.setEnvironment(QStringLiteral("ASSISTANTSERVICE_UPSTREAM_KEY"), QStringLiteral("secret-key"));
    QVERIFY(service.start(optionsFor(server) << QStringLiteral("--log-level") << QStringLiteral("debug")));
    ServiceClient client(service);
    client.result(false, requestIdOf(client.post(paths::text, question("a question"))));
    QCOMPARE(server.requestsTo(upstream::chatTarget).first().header("Authorization").value_or(""),
             QByteArray("Bearer secret-key"));
    const QByteArray log = service.standardError();
    QVERIFY2(log.contains("event=upstream endpoint=/v1/chat/completions outcome=answered status=200"), log.constData());
    for (const char *secret : {"secret-key", "a question", "an answer"}) {
        QVERIFY2(!log.contains(secret), secret);
    }
}

void OpenAiServiceTest::stopDoesNotWaitForTheModel()
{
    ListedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("late")).held());
    ServiceProcess service;
    QVERIFY(service.start(optionsFor(server) << QStringLiteral("--upstream-seconds") << QStringLiteral("3600")));
    ServiceClient client(service);
    QCOMPARE(codeOf(client.post(paths::text, question("Hello"))), 0);
    QVERIFY(eventually([&] { return server.heldCount() == 1; }));
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
}

void OpenAiServiceTest::pictureComesFromTheServicesOwnAddress()
{
    ListedServer server;
    // The smallest GIF there is: one white point.
    const QJsonObject picture{
        {QStringLiteral("b64_json"), QStringLiteral("R0lGODlhAQABAIAAAP///wAAACwAAAAAAQABAAACAkQBADs=")}};
    server.expect("POST", upstream::pictureTarget,
                  ScriptedAnswer::json({{QStringLiteral("data"), QJsonArray{picture}}}));
    ServiceProcess service;
    QVERIFY(service.start(optionsFor(server)));
    ServiceClient client(service);
    const QString id = requestIdOf(client.post(paths::picture, pictureWish("a wall")));
    const QString address = firstAnswerOf(client.result(true, id));
    QVERIFY2(QUrl(address).path().startsWith(QStringLiteral("/pictures/")), qPrintable(address));
    const QByteArray fetched = client.get(QUrl(address).path().toLatin1());
    QVERIFY(fetched.contains("\x89PNG"));
}

Q_DECLARE_METATYPE(ScriptedAnswer)

void OpenAiServiceTest::serverIsLookedAtAtTheStart_data()
{
    QTest::addColumn<ScriptedAnswer>("answer");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("there") << ScriptedAnswer::bytes(R"({"data":[]})") << QByteArray("outcome=answered status=200");
    QTest::newRow("without a list") << ScriptedAnswer::status(404) << QByteArray("outcome=answered status=404");
    QTest::newRow("wrong key") << ScriptedAnswer::status(401) << QByteArray("outcome=answered status=401");
    QTest::newRow("not there") << ScriptedAnswer::drop() << QByteArray("outcome=silent status=0");
}

void OpenAiServiceTest::serverIsLookedAtAtTheStart()
{
    QFETCH(ScriptedAnswer, answer);
    QFETCH(QByteArray, line);
    ScriptedServer server;
    server.expect("GET", upstream::modelsTarget, answer);
    ServiceProcess service;
    QVERIFY(service.start(optionsFor(server)));
    const QByteArray whole = "event=upstream-check address=" + server.url().toLatin1() + "/v1 " + line;
    QVERIFY2(eventually([&] { return service.standardError().contains(whole); }), service.standardError().constData());
    const bool fine = line.endsWith("200") || line.endsWith("404");
    QCOMPARE(service.standardError().contains("level=warning event=upstream-check"), !fine);
}

void OpenAiServiceTest::healthTellsOfTheServer()
{
    ListedServer server;
    server.expect("POST", upstream::chatTarget, upstream::failure(401, QStringLiteral("Invalid API Key")));
    ServiceProcess service;
    QVERIFY(service.start(optionsFor(server)));
    ServiceClient client(service);
    const auto upstreamStatus = [&] {
        const QJsonValue state = jsonOf(client.get("/healthz")).value(QLatin1String("upstream"));
        return state.toObject().value(QLatin1String("status")).toInt();
    };
    QVERIFY(eventually([&] { return upstreamStatus() == 200; }));
    client.result(false, requestIdOf(client.post(paths::text, question("Hello"))));
    QCOMPARE(upstreamStatus(), 401);
}

void OpenAiServiceTest::keyOnTheOpenNetIsWarnedOf_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<bool>("warned");
    QTest::newRow("this machine") << "http://127.0.0.1:9/v1" << false;
    QTest::newRow("this machine by name") << "http://localhost:9/v1" << false;
    QTest::newRow("another") << "http://192.0.2.1:9/v1" << true;
    QTest::newRow("another with TLS") << "https://192.0.2.1:9/v1" << false;
}

void OpenAiServiceTest::keyOnTheOpenNetIsWarnedOf()
{
    QFETCH(QString, server);
    QFETCH(bool, warned);
    ServiceProcess service;
    service.setEnvironment(QStringLiteral("ASSISTANTSERVICE_UPSTREAM_KEY"), QStringLiteral("secret-key"));
    QVERIFY(
        service.start({QStringLiteral("--engine"), QStringLiteral("openai"), QStringLiteral("--upstream"), server}));
    QCOMPARE(service.standardError().contains("event=key-unprotected address=" + server.toLatin1()), warned);
    // Looking for a server that does not answer holds up nobody.
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
}

QTEST_GUILESS_MAIN(OpenAiServiceTest)
#include "tst_openaiservice.moc"
