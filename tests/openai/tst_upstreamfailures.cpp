#include "openai/openaiengine.h"
#include "openai/retries.h"
#include "openai/retryafter.h"
#include "openai/upstreamerror.h"
#include "support/waiting.h"
#include "upstream.h"

#include <QLocale>
#include <QTest>

#include <future>

using namespace tavro::assistantservice;
using tavro::testsupport::eventually;
using tavro::testsupport::ScriptedAnswer;
using tavro::testsupport::ScriptedServer;
using tavro::testsupport::waitLimit;

Q_DECLARE_METATYPE(ScriptedAnswer)

namespace {

/// Cancels the question once the server has it.
TextResult askAndCancel(const ScriptedServer &server, const ChatSettings &settings)
{
    const UpstreamChat chat(settings);
    std::atomic<bool> cancelled{false};
    auto result = std::async(std::launch::async,
                             [&] { return chat.answer(upstream::question(QStringLiteral("Hello")), cancelled); });
    server.waitForRequests(1, waitLimit);
    cancelled = true;
    return result.get();
}

} // namespace

/// What goes wrong between the service and the model's server.
class UpstreamFailuresTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void failureIsToldInWords_data();
    void failureIsToldInWords();
    void serverThatIsNotThere();
    void keyIsNeverRepeated();
    void refusedToolsNameTheOption_data();
    void refusedToolsNameTheOption();
    void passingFailureIsTriedAgain_data();
    void passingFailureIsTriedAgain();
    void lastingFailureIsGivenUp_data();
    void lastingFailureIsGivenUp();
    void loadingModelIsWaitedFor();
    void wishedWaitIsKept();
    void waitsAreTold();
    void waitBeyondTheLimitIsNotBegun_data();
    void waitBeyondTheLimitIsNotBegun();
    void timeIsLimited();
    void slowAnswerIsWaitedFor();
    void cancellingEndsTheCall_data();
    void cancellingEndsTheCall();
    void cancellingEndsTheWait();
    void endlessAnswerIsRefused();
    void lastOutcomeIsRemembered();
};

void UpstreamFailuresTest::failureIsToldInWords_data()
{
    QTest::addColumn<ScriptedAnswer>("answer");
    QTest::addColumn<QString>("part");
    QTest::newRow("key") << upstream::failure(401, QStringLiteral("Invalid API Key"))
                         << "does not accept the key. It says: Invalid API Key";
    QTest::newRow("rights") << upstream::failure(403, QStringLiteral("no")) << "does not accept the key";
    QTest::newRow("model") << upstream::failure(404, QStringLiteral("no such model")) << "no model \"small\"";
    QTest::newRow("model by code") << upstream::failure(404, QStringLiteral("?"), QStringLiteral("model_not_found"))
                                   << "no model \"small\"";
    QTest::newRow("model to be pulled")
        << ScriptedAnswer::bytes(R"({"error":"model \"small\" not found, try pulling it first"})").withStatus(404)
        << "no model \"small\"";
    QTest::newRow("address") << ScriptedAnswer::bytes("404 page\n not found", "text/plain").withStatus(404)
                             << "does not know this address. Please check it; most end in /v1. It says: 404 page not "
                                "found";
    QTest::newRow("address, in details") << ScriptedAnswer::bytes(R"({"detail":"Not Found"})").withStatus(404)
                                         << "does not know this address";
    QTest::newRow("invisible characters")
        << upstream::failure(400, QStringLiteral("a\u202eb\u0007c")) << "It says: abc";
    QTest::newRow("a page") << ScriptedAnswer::bytes("<html>Bad gateway</html>", "text/html").withStatus(418)
                            << "answered with status 418.";
    QTest::newRow("error as text") << ScriptedAnswer::bytes(R"({"error":"model crashed"})").withStatus(400)
                                   << "It says: model crashed";
    QTest::newRow("flat error") << ScriptedAnswer::bytes(R"({"object":"error","message":"bad"})").withStatus(400)
                                << "answered with status 400. It says: bad";
    QTest::newRow("details")
        << ScriptedAnswer::bytes(R"({"detail":[{"msg":"field required"},{"msg":"too long"}]})").withStatus(422)
        << "It says: field required; too long";
    QTest::newRow("long message") << upstream::failure(400, QString(5000, QLatin1Char('x')))
                                  << QString(299, u'x') + u'…';
    QTest::newRow("redirect") << ScriptedAnswer::redirect(301, "http://127.0.0.1:1/") << "another address";
    QTest::newRow("several choices") << ScriptedAnswer::status(300) << "another address";
    QTest::newRow("quota") << upstream::failure(429, QStringLiteral("pay"), QStringLiteral("insufficient_quota"))
                           << "no credit left. It says: pay";
    QTest::newRow("good status, error in it") << ScriptedAnswer::bytes(R"({"error":"Unexpected endpoint"})")
                                              << "cannot be used. It says: Unexpected endpoint";
    QTest::newRow("good status, a page") << ScriptedAnswer::bytes("<html>", "text/html") << "it is a web page";
    QTest::newRow("nothing") << ScriptedAnswer::bytes({}) << "cannot be used: it is empty";
    QTest::newRow("a stream") << ScriptedAnswer::bytes("data: {\"choices\":[]}\n\n", "text/event-stream")
                              << "stream of events";
    QTest::newRow("a stream, badly named") << ScriptedAnswer::bytes("data: {\"choices\":[]}\n\n") << "stream of events";
    QTest::newRow("no choices") << ScriptedAnswer::bytes(R"({"object":"list"})") << "nothing in its \"choices\"";
    QTest::newRow("half of it") << ScriptedAnswer::bytes(R"({"choices":[)") << "no JSON";
    QTest::newRow("too deep") << ScriptedAnswer::bytes(R"({"choices":)" + QByteArray(100, '[') + QByteArray(100, ']')
                                                       + "}")
                              << "no JSON that can be read";
    QTest::newRow("a list twice") << ScriptedAnswer::bytes(R"({"choices":[1],"choices":[{"message":{"content":"a"}}]})")
                                  << "no JSON that can be read";
    QTest::newRow("dropped") << ScriptedAnswer::drop() << "hung up without an answer";
    QTest::newRow("cut off") << upstream::text(QStringLiteral("Hello")).cutAfter(10) << "broke off";
    QTest::newRow("no HTTP") << ScriptedAnswer::garbage("hello\r\n\r\n") << "what is no HTTP";
}

void UpstreamFailuresTest::failureIsToldInWords()
{
    QFETCH(ScriptedAnswer, answer);
    QFETCH(QString, part);
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, answer);
    const TextResult result = upstream::ask(server, QStringLiteral("Hello"));
    QVERIFY(result.error.code == ErrorCode::UpstreamFailed);
    QVERIFY2(result.error.message.contains(part), qPrintable(result.error.message));
    // A question that got an answer of any kind, or was taken, is not sent a second time.
    QCOMPARE(server.requestCount(), 1);
}

void UpstreamFailuresTest::serverThatIsNotThere()
{
    ScriptedServer server;
    server.stopListening();
    const TextResult result = upstream::ask(server, QStringLiteral("Hello"));
    QVERIFY(result.error.code == ErrorCode::UpstreamFailed);
    QCOMPARE(result.error.message,
             QStringLiteral("The model's server %1/v1 cannot be reached. Is it running?").arg(server.url()));
}

void UpstreamFailuresTest::keyIsNeverRepeated()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget,
                  upstream::failure(401, QStringLiteral("Incorrect key provided: secret-key.")));
    const TextResult result = upstream::ask(server, QStringLiteral("Hello"));
    QVERIFY2(result.error.message.endsWith(QStringLiteral("provided: ***.")), qPrintable(result.error.message));
}

void UpstreamFailuresTest::refusedToolsNameTheOption_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("text");
    QTest::newRow("auto") << 400 << "\"auto\" tool choice requires --enable-auto-tool-choice";
    QTest::newRow("template") << 500 << "tools param requires --jinja flag";
    QTest::newRow("model") << 400 << "small does not support tools";
}

// Asking again is of no use.
void UpstreamFailuresTest::refusedToolsNameTheOption()
{
    QFETCH(int, status);
    QFETCH(QString, text);
    ScriptedServer server;
    server.always("POST", upstream::chatTarget, upstream::failure(status, text));
    const QString message = upstream::ask(server, QStringLiteral("Hello")).error.message;
    QVERIFY2(message.contains(QStringLiteral("--tools off")) && message.contains(text), qPrintable(message));
    QCOMPARE(server.requestCount(), 1);
}

void UpstreamFailuresTest::passingFailureIsTriedAgain_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {408, 429, 500, 502, 503, 504, 529}) {
        QTest::newRow(qPrintable(QString::number(status))) << status;
    }
}

void UpstreamFailuresTest::passingFailureIsTriedAgain()
{
    QFETCH(int, status);
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::failure(status, QStringLiteral("later")));
    server.expect("POST", upstream::chatTarget, upstream::failure(status, QStringLiteral("later")));
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("Fine.")));
    QCOMPARE(upstream::ask(server, QStringLiteral("Hello")).answer, QStringLiteral("Fine."));
    QCOMPARE(server.requestCount(), 3);
}

void UpstreamFailuresTest::lastingFailureIsGivenUp_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("part");
    QTest::newRow("429") << 429 << "asked too often";
    QTest::newRow("500") << 500 << "status 500";
}

void UpstreamFailuresTest::lastingFailureIsGivenUp()
{
    QFETCH(int, status);
    QFETCH(QString, part);
    ScriptedServer server;
    server.always("POST", upstream::chatTarget, upstream::failure(status, QStringLiteral("never")));
    const TextResult result = upstream::ask(server, QStringLiteral("Hello"));
    QVERIFY2(result.error.message.contains(part), qPrintable(result.error.message));
    QCOMPARE(server.requestCount(), 3);
}

void UpstreamFailuresTest::loadingModelIsWaitedFor()
{
    ScriptedServer server;
    for (int i = 0; i < 20; ++i) {
        server.expect("POST", upstream::chatTarget, upstream::failure(503, QStringLiteral("Loading model")));
    }
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("Fine.")));
    QCOMPARE(upstream::ask(server, QStringLiteral("Hello")).answer, QStringLiteral("Fine."));
}

void UpstreamFailuresTest::wishedWaitIsKept()
{
    using std::chrono::milliseconds;
    UpstreamReply reply;
    reply.outcome = UpstreamReply::Outcome::Answered;
    reply.status = 429;
    reply.retryAfter = "7";
    QCOMPARE(delayBeforeRetry(reply, 1, milliseconds(1000)), std::optional(milliseconds(7000)));
    reply.retryAfter = "Wed, 21 Oct 2015 07:28:00 GMT";
    QCOMPARE(delayBeforeRetry(reply, 2, milliseconds(1000)), std::optional(milliseconds(2000)));
    const QDateTime later = QDateTime::currentDateTimeUtc().addSecs(1000);
    reply.retryAfter = QLocale::c().toString(later, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss")).toLatin1() + " GMT";
    const milliseconds delay = delayBeforeRetry(reply, 1, milliseconds(1000)).value_or(milliseconds(0));
    QVERIFY(delay > milliseconds(900'000) && delay <= milliseconds(1'000'000));
    // A server that wants no wait would be asked without a pause.
    reply.retryAfter = "0";
    QCOMPARE(delayBeforeRetry(reply, 1, milliseconds(1000)), std::optional(milliseconds(1000)));
}

void UpstreamFailuresTest::waitBeyondTheLimitIsNotBegun_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("wait");
    QTest::addColumn<QString>("part");
    QTest::newRow("seconds") << 429 << QByteArray("3600000")
                             << "asked too often. It asks for a wait of more than a day.";
    QTest::newRow("no integer") << 429 << QByteArray("99999999999") << "It asks for a wait of more than a day.";
    QTest::newRow("no number at all") << 429 << QByteArray(400, '9') << "It asks for a wait of more than a day.";
    QTest::newRow("a date") << 503 << QByteArray("Fri, 31 Dec 2100 23:59:59 GMT")
                            << "is not ready. It asks for a wait of more than a day.";
}

void UpstreamFailuresTest::waitBeyondTheLimitIsNotBegun()
{
    QFETCH(int, status);
    QFETCH(QByteArray, wait);
    QFETCH(QString, part);
    ScriptedServer server;
    server.always("POST", upstream::chatTarget,
                  upstream::failure(status, QStringLiteral("later")).withHeader("Retry-After", wait));
    const TextResult result = upstream::ask(server, QStringLiteral("Hello"));
    QVERIFY2(result.error.message.contains(part), qPrintable(result.error.message));
    QCOMPARE(server.requestCount(), 1);
}

void UpstreamFailuresTest::waitsAreTold()
{
    using std::chrono::seconds;
    QCOMPARE(waitText(seconds(1)), QStringLiteral("1 second"));
    QCOMPARE(waitText(seconds(120)), QStringLiteral("120 seconds"));
    QCOMPARE(waitText(seconds(121)), QStringLiteral("3 minutes"));
    QCOMPARE(waitText(seconds(7201)), QStringLiteral("3 hours"));
    QCOMPARE(waitText(seconds(86401)), QStringLiteral("more than a day"));
}

// HTTP clients have limits of some seconds of their own, and models take longer.
void UpstreamFailuresTest::slowAnswerIsWaitedFor()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("Fine.")).held());
    auto result = std::async(std::launch::async, [&] { return upstream::ask(server, QStringLiteral("Hello")); });
    QVERIFY(server.waitForRequests(1, waitLimit));
    const auto isOver = [&] { return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready; };
    const bool gaveUp = eventually(isOver, std::chrono::seconds(7));
    server.releaseAll();
    QVERIFY(!gaveUp);
    QCOMPARE(result.get().answer, QStringLiteral("Fine."));
}

void UpstreamFailuresTest::timeIsLimited()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("Fine.")).heldAfter(3));
    ChatSettings settings = upstream::chatSettings(server);
    settings.limit = std::chrono::milliseconds(300);
    const std::atomic<bool> cancelled{false};
    const TextResult result = UpstreamChat(settings).answer(upstream::question(QStringLiteral("Hello")), cancelled);
    QVERIFY(result.error.code == ErrorCode::UpstreamTimeout);
    QVERIFY2(result.error.message.contains(QStringLiteral("in time")), qPrintable(result.error.message));
}

void UpstreamFailuresTest::cancellingEndsTheCall_data()
{
    QTest::addColumn<ScriptedAnswer>("answer");
    QTest::newRow("before the head") << upstream::text(QStringLiteral("Fine.")).held();
    QTest::newRow("within the body") << upstream::text(QStringLiteral("Fine.")).heldAfter(3);
}

void UpstreamFailuresTest::cancellingEndsTheCall()
{
    QFETCH(ScriptedAnswer, answer);
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, answer);
    ChatSettings settings = upstream::chatSettings(server);
    settings.limit = std::chrono::hours(1);
    QVERIFY(askAndCancel(server, settings).error.code == ErrorCode::UpstreamFailed);
    QCOMPARE(server.requestCount(), 1);
}

void UpstreamFailuresTest::cancellingEndsTheWait()
{
    ScriptedServer server;
    server.always("POST", upstream::chatTarget,
                  upstream::failure(429, QStringLiteral("later")).withHeader("Retry-After", "3000"));
    ChatSettings settings = upstream::chatSettings(server);
    settings.limit = std::chrono::hours(1);
    settings.retryUnit = std::chrono::seconds(1);
    QVERIFY(askAndCancel(server, settings).error);
    QCOMPARE(server.requestCount(), 1);
}

void UpstreamFailuresTest::endlessAnswerIsRefused()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, ScriptedAnswer::endless());
    const TextResult result = upstream::ask(server, QStringLiteral("Hello"));
    QVERIFY2(result.error.message.contains(QStringLiteral("larger answer")), qPrintable(result.error.message));
}

void UpstreamFailuresTest::lastOutcomeIsRemembered()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::failure(401, QStringLiteral("no")));
    const OpenAiEngine engine(upstream::chatSettings(server), std::nullopt);
    const auto state = [&] { return engine.state().value(QLatin1String("upstream")).toObject(); };
    QVERIFY(state().isEmpty());
    const std::atomic<bool> cancelled{false};
    engine.answer(upstream::question(QStringLiteral("Hello")), cancelled);
    QCOMPARE(state().value(QLatin1String("outcome")).toString(), QStringLiteral("answered"));
    QCOMPARE(state().value(QLatin1String("status")).toInt(), 401);
    QVERIFY(state().value(QLatin1String("ageSeconds")).toInt(-1) >= 0);
    server.stopListening();
    engine.answer(upstream::question(QStringLiteral("Hello")), cancelled);
    QCOMPARE(state().value(QLatin1String("outcome")).toString(), QStringLiteral("not-connected"));
    QVERIFY(!engine.state().contains(QLatin1String("pictureUpstream")));
}

QTEST_GUILESS_MAIN(UpstreamFailuresTest)
#include "tst_upstreamfailures.moc"
