#include "support/waiting.h"
#include "upstream.h"

#include <QTest>

#include <future>

using namespace tavro::assistantservice;
using tavro::testsupport::ScriptedAnswer;
using tavro::testsupport::ScriptedServer;
using tavro::testsupport::waitLimit;

/// Questions that are answered with text, over real connections.
class UpstreamAnswersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void requestHoldsTheConversation();
    void withoutAKeyNoneIsSent();
    void withoutToolsNoneAreOffered();
    void answerIsTheModels();
    void switchesChooseTheModel_data();
    void switchesChooseTheModel();
    void onlyModelIsFoundOnce();
    void modelMustBeChosenAmongSeveral();
    void modelsMayBeMissing_data();
    void modelsMayBeMissing();
    void tooLongConversationIsShortened();
    void tooLongIsKnownByItsType();
    void questionThatIsTooLongAlone();
    void cutAnswerIsToldSo();
    void filteredAnswerIsToldSo();
    void emptyAnswerIsAnError();
    void longAnswerIsShortened();
    void invisibleCharactersAreLeftOut();
    void manyAtOnce();
};

void UpstreamAnswersTest::requestHoldsTheConversation()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("Fine.")));
    TextRequest request = upstream::question(QStringLiteral("How are you?"));
    request.messages = {{false, QStringLiteral("Hello")}, {true, QStringLiteral("Hi")}, request.messages.last()};
    const std::atomic<bool> cancelled{false};
    QCOMPARE(UpstreamChat(upstream::chatSettings(server)).answer(request, cancelled).answer, QStringLiteral("Fine."));

    const auto sent = server.requests().first();
    QCOMPARE(sent.header("Authorization").value_or(""), QByteArray("Bearer secret-key"));
    QCOMPARE(sent.header("Content-Type").value_or(""), QByteArray("application/json"));
    QCOMPARE(sent.header("Host").value_or(""), "127.0.0.1:" + QByteArray::number(server.port()));
    const QJsonObject body = sent.json();
    QCOMPARE(body.keys(),
             (QStringList{QStringLiteral("messages"), QStringLiteral("model"), QStringLiteral("stream"),
                          QStringLiteral("tools")}));
    QCOMPARE(body.value(QLatin1String("stream")), QJsonValue(false));
    QCOMPARE(body.value(QLatin1String("model")).toString(), QStringLiteral("small"));
    QCOMPARE(body.value(QLatin1String("tools")).toArray().size(), 4);
    const QJsonArray messages = body.value(QLatin1String("messages")).toArray();
    QCOMPARE(messages.size(), 4);
    QVERIFY(messages[1][QLatin1String("content")].toString().contains(QStringLiteral("Sunset Beach")));
    QCOMPARE(messages[3][QLatin1String("content")].toString(), QStringLiteral("How are you?"));
}

void UpstreamAnswersTest::withoutAKeyNoneIsSent()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("Fine.")));
    ChatSettings settings = upstream::chatSettings(server);
    settings.key.clear();
    const std::atomic<bool> cancelled{false};
    QVERIFY(!UpstreamChat(settings).answer(upstream::question(QStringLiteral("Hello")), cancelled).error);
    QCOMPARE(server.requests().first().headerCount("Authorization"), 0);
}

void UpstreamAnswersTest::withoutToolsNoneAreOffered()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("Fine.")));
    ChatSettings settings = upstream::chatSettings(server);
    settings.tools = false;
    const std::atomic<bool> cancelled{false};
    QVERIFY(!UpstreamChat(settings).answer(upstream::question(QStringLiteral("Hello")), cancelled).error);
    QVERIFY(!server.requests().first().json().contains(QLatin1String("tools")));
}

void UpstreamAnswersTest::answerIsTheModels()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget,
                  upstream::text(QStringLiteral("<think>hm</think>\n\nGrüße, 你好 🎬")).chunked());
    const TextResult result = upstream::ask(server, QStringLiteral("Hello"));
    QVERIFY2(!result.error, qPrintable(result.error.message));
    QCOMPARE(result.answer, QStringLiteral("Grüße, 你好 🎬"));
    QVERIFY(result.agentCommands.isEmpty());
}

void UpstreamAnswersTest::switchesChooseTheModel_data()
{
    QTest::addColumn<bool>("deep");
    QTest::addColumn<bool>("search");
    QTest::addColumn<bool>("configured");
    QTest::addColumn<QString>("model");
    QTest::newRow("none") << false << false << true << "small";
    QTest::newRow("deep") << true << false << true << "deep";
    QTest::newRow("search") << false << true << true << "search";
    QTest::newRow("both") << true << true << true << "search";
    QTest::newRow("not configured") << true << true << false << "small";
}

void UpstreamAnswersTest::switchesChooseTheModel()
{
    QFETCH(bool, deep);
    QFETCH(bool, search);
    QFETCH(bool, configured);
    QFETCH(QString, model);
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("Fine.")));
    ChatSettings settings = upstream::chatSettings(server);
    settings.deepModel = configured ? QStringLiteral("deep") : QString();
    settings.searchModel = configured ? QStringLiteral("search") : QString();
    TextRequest request = upstream::question(QStringLiteral("Hello"));
    request.deepModel = deep;
    request.onlineSearch = search;
    const std::atomic<bool> cancelled{false};
    QVERIFY(!UpstreamChat(settings).answer(request, cancelled).error);
    QCOMPARE(server.requests().first().json().value(QLatin1String("model")).toString(), model);
}

void UpstreamAnswersTest::onlyModelIsFoundOnce()
{
    ScriptedServer server;
    const QJsonArray models{QJsonObject{{QStringLiteral("id"), QStringLiteral("/models/llama.gguf")}}};
    server.expect("GET", upstream::modelsTarget, ScriptedAnswer::json({{QStringLiteral("data"), models}}));
    server.always("POST", upstream::chatTarget, upstream::text(QStringLiteral("Fine.")));
    ChatSettings settings = upstream::chatSettings(server);
    settings.model.clear();
    const UpstreamChat chat(settings);
    const std::atomic<bool> cancelled{false};
    for (int i = 0; i < 2; ++i) {
        QVERIFY(!chat.answer(upstream::question(QStringLiteral("Hello")), cancelled).error);
    }
    QCOMPARE(server.requestCountTo(upstream::modelsTarget), 1);
    QCOMPARE(server.requests().last().json().value(QLatin1String("model")).toString(),
             QStringLiteral("/models/llama.gguf"));
}

void UpstreamAnswersTest::modelMustBeChosenAmongSeveral()
{
    ScriptedServer server;
    QJsonArray models;
    for (int i = 1; i <= 7; ++i) {
        models.append(QJsonObject{{QStringLiteral("id"), QStringLiteral("model-%1").arg(i)}});
    }
    server.expect("GET", upstream::modelsTarget, ScriptedAnswer::json({{QStringLiteral("data"), models}}));
    ChatSettings settings = upstream::chatSettings(server);
    settings.model.clear();
    const std::atomic<bool> cancelled{false};
    const TextResult result = UpstreamChat(settings).answer(upstream::question(QStringLiteral("Hello")), cancelled);
    QVERIFY(result.error.code == ErrorCode::UpstreamFailed);
    QVERIFY2(result.error.message.contains(QStringLiteral("7 models")), qPrintable(result.error.message));
    QVERIFY(result.error.message.endsWith(QStringLiteral("model-1, model-2, model-3, model-4, model-5, …")));
}

void UpstreamAnswersTest::modelsMayBeMissing_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("part");
    QTest::newRow("not found") << 404 << QByteArray("404 page not found") << "does not know this address";
    QTest::newRow("none") << 200 << QByteArray(R"({"data":[]})") << "names no model";
    QTest::newRow("no list") << 200 << QByteArray("<html>") << "is a web page";
}

void UpstreamAnswersTest::modelsMayBeMissing()
{
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    QFETCH(QString, part);
    ScriptedServer server;
    server.expect("GET", upstream::modelsTarget, ScriptedAnswer::bytes(body).withStatus(status));
    ChatSettings settings = upstream::chatSettings(server);
    settings.model.clear();
    const std::atomic<bool> cancelled{false};
    const TextResult result = UpstreamChat(settings).answer(upstream::question(QStringLiteral("Hello")), cancelled);
    QVERIFY2(result.error.message.contains(part), qPrintable(result.error.message));
}

void UpstreamAnswersTest::tooLongConversationIsShortened()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget,
                  upstream::failure(400, QStringLiteral("too many tokens"), QStringLiteral("context_length_exceeded")));
    server.expect("POST", upstream::chatTarget,
                  upstream::failure(500, QStringLiteral("the request exceeds the available context size")));
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("Fine.")));
    TextRequest request = upstream::question(QStringLiteral("And now?"));
    for (int i = 0; i < 3; ++i) {
        request.messages.prepend({true, QStringLiteral("answer")});
        request.messages.prepend({false, QStringLiteral("question")});
    }
    const std::atomic<bool> cancelled{false};
    const TextResult result = UpstreamChat(upstream::chatSettings(server)).answer(request, cancelled);
    QCOMPARE(
        result.answer,
        QStringLiteral("Fine.\n\n(The conversation had become too long for the model; its beginning was left out.)"));
    const auto count = [&](int index) {
        return server.requests()[index].json().value(QLatin1String("messages")).toArray().size();
    };
    QCOMPARE(count(0), 8);
    QCOMPARE(count(1), 4);
    QCOMPARE(count(2), 2);
}

void UpstreamAnswersTest::tooLongIsKnownByItsType()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget,
                  ScriptedAnswer::bytes(R"({"error":{"code":400,"message":"no","type":"exceed_context_size_error"}})")
                      .withStatus(400));
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("Fine.")));
    TextRequest request = upstream::question(QStringLiteral("And now?"));
    request.messages = {{false, QStringLiteral("Hello")}, {true, QStringLiteral("Hi")}, request.messages.last()};
    const std::atomic<bool> cancelled{false};
    QVERIFY(!UpstreamChat(upstream::chatSettings(server)).answer(request, cancelled).error);
    QCOMPARE(server.requestCount(), 2);
}

void UpstreamAnswersTest::questionThatIsTooLongAlone()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget,
                  upstream::failure(400, QStringLiteral("too many tokens"), QStringLiteral("context_length_exceeded")));
    const TextResult result = upstream::ask(server, QStringLiteral("Hello"));
    QVERIFY(result.error.message.endsWith(QStringLiteral("It says: too many tokens")));
    QCOMPARE(server.requestCount(), 1);
}

void UpstreamAnswersTest::cutAnswerIsToldSo()
{
    ScriptedServer server;
    QJsonObject message = upstream::callingMessage(QStringLiteral("stop_layer"), {{QStringLiteral("layer_id"), 1}});
    message.insert(QStringLiteral("content"), QStringLiteral("First of"));
    server.expect("POST", upstream::chatTarget, upstream::message(message, QStringLiteral("length")));
    const TextResult result = upstream::ask(server, QStringLiteral("stop layer 1"));
    QCOMPARE(
        result.answer,
        QStringLiteral("First of\n\n(The answer reached the model's limit and is cut off. Nothing was carried out.)"));
    QVERIFY(result.agentCommands.isEmpty());
}

void UpstreamAnswersTest::filteredAnswerIsToldSo()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QString(), QStringLiteral("content_filter")));
    QCOMPARE(upstream::ask(server, QStringLiteral("你好")).answer,
             QStringLiteral("模型服务器因内容原因没有给出回答。"));
}

void UpstreamAnswersTest::emptyAnswerIsAnError()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("<think>hm</think>")));
    const TextResult result = upstream::ask(server, QStringLiteral("Hello"));
    QVERIFY(result.error.code == ErrorCode::UpstreamFailed);
    QVERIFY(result.error.message.contains(QStringLiteral("empty answer")));
}

void UpstreamAnswersTest::longAnswerIsShortened()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QString(100001, u'x')));
    const QString answer = upstream::ask(server, QStringLiteral("Hello")).answer;
    QCOMPARE(answer.count(QLatin1Char('x')), 100000);
    QVERIFY(answer.endsWith(QStringLiteral("\n\n(The answer is longer than is shown; its end is left out.)")));
}

void UpstreamAnswersTest::invisibleCharactersAreLeftOut()
{
    ScriptedServer server;
    server.expect("POST", upstream::chatTarget, upstream::text(QStringLiteral("a\u001b[31mb\u202ec\r\nd\te")));
    QCOMPARE(upstream::ask(server, QStringLiteral("Hello")).answer, QStringLiteral("a[31mbc\nd\te"));
}

void UpstreamAnswersTest::manyAtOnce()
{
    ScriptedServer server;
    constexpr int questions = 16;
    server.always("POST", upstream::chatTarget, upstream::text(QStringLiteral("Fine.")).held());
    const UpstreamChat chat(upstream::chatSettings(server));
    const std::atomic<bool> cancelled{false};
    std::vector<std::future<TextResult>> results;
    for (int i = 0; i < questions; ++i) {
        results.push_back(std::async(
            std::launch::async, [&] { return chat.answer(upstream::question(QStringLiteral("Hello")), cancelled); }));
    }
    const bool together = server.waitForRequests(questions, waitLimit);
    server.releaseAll();
    QVERIFY(together);
    for (auto &result : results) {
        QCOMPARE(result.get().answer, QStringLiteral("Fine."));
    }
}

QTEST_GUILESS_MAIN(UpstreamAnswersTest)
#include "tst_upstreamanswers.moc"
