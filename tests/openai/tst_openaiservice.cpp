#include "serviceclient.h"
#include "support/waiting.h"
#include "upstream.h"

#include <QTest>

#include <csignal>

using tavro::testsupport::ScriptedAnswer;
using tavro::testsupport::ScriptedServer;
using tavro::testsupport::waitLimit;

/// The program itself between a panel and a model's server.
class OpenAiServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void questionGoesToTheModelAndBack();
    void failureReachesThePanelInWords();
    void keyAndTextsStayOutOfTheLog();
    void stopDoesNotWaitForTheModel();
    void pictureComesFromTheServicesOwnAddress();

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
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("Paris.")));
    ServiceProcess service;
    QVERIFY(service.start(optionsFor(server)));
    ServiceClient client(service);
    const QString id = requestIdOf(client.post(paths::text, question("What is the capital of France?")));
    QCOMPARE(firstAnswerOf(client.result(false, id)), QStringLiteral("Paris."));
}

void OpenAiServiceTest::failureReachesThePanelInWords()
{
    ScriptedServer server;
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
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("an answer")));
    ServiceProcess service;
    service.setEnvironment(QStringLiteral("ASSISTANTSERVICE_UPSTREAM_KEY"), QStringLiteral("secret-key"));
    QVERIFY(service.start(optionsFor(server) << QStringLiteral("--log-level") << QStringLiteral("debug")));
    ServiceClient client(service);
    client.result(false, requestIdOf(client.post(paths::text, question("a question"))));
    QCOMPARE(server.requests().first().header("Authorization").value_or(""), QByteArray("Bearer secret-key"));
    const QByteArray log = service.standardError();
    QVERIFY2(log.contains("event=upstream endpoint=/v1/chat/completions outcome=answered status=200"), log.constData());
    for (const char *secret : {"secret-key", "a question", "an answer"}) {
        QVERIFY2(!log.contains(secret), secret);
    }
}

void OpenAiServiceTest::stopDoesNotWaitForTheModel()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("late")).held());
    ServiceProcess service;
    QVERIFY(service.start(optionsFor(server) << QStringLiteral("--upstream-seconds") << QStringLiteral("3600")));
    ServiceClient client(service);
    QCOMPARE(codeOf(client.post(paths::text, question("Hello"))), 0);
    QVERIFY(server.waitForRequests(1, waitLimit));
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
}

void OpenAiServiceTest::pictureComesFromTheServicesOwnAddress()
{
    ScriptedServer server;
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

QTEST_GUILESS_MAIN(OpenAiServiceTest)
#include "tst_openaiservice.moc"
