#include "aicontroller/servicemessages.h"
#include "support/jsonshape.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace tavro::aiassistant;
using tavro::testsupport::rawValueOf;
using tavro::testsupport::shapeOf;

/// The messages as pure functions. What they look like on the wire: tst_requests, tst_replies, tst_polling.
class ServiceMessagesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void endpoints();
    void textBodyHasItsKeysAndTypes();
    void textBodyIsIndented();
    void pictureBodyHasItsKeysAndTypes();
    void opacityIsWidenedToDouble();
    void resultBodyHasItsKeysAndTypes();
    void messagesNameTheirAuthor();
    void generationReply_data();
    void generationReply();
    void generationReplyDetails();
    void resultReply_data();
    void resultReply();
    void resultReplyDetails();
    void firstAnswerOfAnotherTypeIsEmpty_data();
    void firstAnswerOfAnotherTypeIsEmpty();
    void agentCommandsOfAnotherTypeAreNone_data();
    void agentCommandsOfAnotherTypeAreNone();
    void manyNestedArraysAreNoDocument();
};

namespace {

QJsonObject parsed(const QByteArray &body)
{
    return QJsonDocument::fromJson(body).object();
}

} // namespace

void ServiceMessagesTest::endpoints()
{
    QCOMPARE(Endpoint::text(), QStringLiteral("/ai/texttotext/generate/"));
    QCOMPARE(Endpoint::picture(), QStringLiteral("/ai/texttoimage/generate/"));
    QCOMPARE(Endpoint::result(), QStringLiteral("/ai/result/filter/"));
}

void ServiceMessagesTest::textBodyHasItsKeysAndTypes()
{
    const QJsonObject body = parsed(textRequestBody(true, false, {1, 2}, {3}));
    QCOMPARE(shapeOf(body), QStringLiteral("enableDS:bool enableNet:bool mediaList:array messages:array"));
    QCOMPARE(body.value(QLatin1String("enableDS")).toBool(), true);
    QCOMPARE(body.value(QLatin1String("enableNet")).toBool(), false);
    QCOMPARE(body.value(QLatin1String("messages")).toArray().size(), 2);
    QCOMPARE(body.value(QLatin1String("mediaList")).toArray().size(), 1);
}

void ServiceMessagesTest::textBodyIsIndented()
{
    const QByteArray body = textRequestBody(false, true, {}, {});
    QCOMPARE(body, QJsonDocument(parsed(body)).toJson(QJsonDocument::Indented));
    QVERIFY(body.startsWith("{\n    \"enableDS\": false,\n"));
}

void ServiceMessagesTest::pictureBodyHasItsKeysAndTypes()
{
    QCOMPARE(shapeOf(parsed(pictureRequestBody({}))),
             QStringLiteral("content:string enableLogo:bool height:number logoContent:string logoLanguage:bool "
                            "logoOpacity:number logoPositon:number style:string useSR:bool width:number"));
}

void ServiceMessagesTest::opacityIsWidenedToDouble()
{
    PictureGenerateInfo info;
    QCOMPARE(rawValueOf(pictureRequestBody(info), "logoOpacity"), QByteArrayLiteral("0.3499999940395355"));
    info.logoOpacity = 1;
    QCOMPARE(rawValueOf(pictureRequestBody(info), "logoOpacity"), QByteArrayLiteral("1"));
}

void ServiceMessagesTest::resultBodyHasItsKeysAndTypes()
{
    const QJsonObject body = parsed(resultRequestBody(true, QStringLiteral("r")));
    QCOMPARE(shapeOf(body), QStringLiteral("reqId:string type:bool"));
    QCOMPARE(body.value(QLatin1String("type")).toBool(), true);
    QCOMPARE(body.value(QLatin1String("reqId")).toString(), QStringLiteral("r"));
}

void ServiceMessagesTest::messagesNameTheirAuthor()
{
    const QJsonObject user = message(Author::User, QStringLiteral("q")).toObject();
    const QJsonObject assistant = message(Author::Assistant, QStringLiteral("a")).toObject();
    QCOMPARE(shapeOf(user), QStringLiteral("content:string type:bool"));
    QCOMPARE(user.value(QLatin1String("type")).toBool(true), false);
    QCOMPARE(assistant.value(QLatin1String("type")).toBool(false), true);
    QCOMPARE(assistant.value(QLatin1String("content")).toString(), QStringLiteral("a"));
}

void ServiceMessagesTest::generationReply_data()
{
    using Kind = GenerationReply::Kind;
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("kind");
    QTest::newRow("nothing") << QByteArray() << int(Kind::NotJson);
    QTest::newRow("byte order mark alone") << QByteArray("\xEF\xBB\xBF") << int(Kind::NotJson);
    QTest::newRow("zeroes") << QByteArray(100, '\0') << int(Kind::NotJson);
    QTest::newRow("empty object") << QByteArray("{}") << int(Kind::NoCode);
    QTest::newRow("empty array") << QByteArray("[]") << int(Kind::NoCode);
    QTest::newRow("code of another case") << QByteArray(R"({"Code":0})") << int(Kind::NoCode);
    QTest::newRow("accepted") << QByteArray(R"({"code":0})") << int(Kind::Accepted);
    QTest::newRow("accepted, -0.0") << QByteArray(R"({"code":-0.0})") << int(Kind::Accepted);
    QTest::newRow("accepted, 0e5") << QByteArray(R"({"code":0e5})") << int(Kind::Accepted);
    QTest::newRow("refused") << QByteArray(R"({"code":1})") << int(Kind::Refused);
    QTest::newRow("refused, huge") << QByteArray(R"({"code":1e300})") << int(Kind::Refused);
    QTest::newRow("refused, text") << QByteArray(R"({"code":"0"})") << int(Kind::Refused);
    QTest::newRow("refused, object") << QByteArray(R"({"code":{}})") << int(Kind::Refused);
}

void ServiceMessagesTest::generationReply()
{
    QFETCH(QByteArray, body);
    QFETCH(int, kind);
    QCOMPARE(int(readGenerationReply(body).kind), kind);
}

void ServiceMessagesTest::generationReplyDetails()
{
    QVERIFY(!readGenerationReply(R"({"code":0,"data":{}})").reqId);
    QCOMPARE(readGenerationReply(R"({"code":0,"data":{"reqId":"r"}})").reqId.value(), QStringLiteral("r"));
    QCOMPARE(readGenerationReply(R"({"code":0,"data":{"reqId":7}})").reqId.value(), QString());
    QCOMPARE(readGenerationReply(R"({"code":3,"message":"m"})").message, QStringLiteral("m"));
    QVERIFY(readGenerationReply(R"({"code":3,"message":5})").message.isEmpty());
}

void ServiceMessagesTest::resultReply_data()
{
    using Kind = ResultReply::Kind;
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("kind");
    QTest::newRow("nothing") << QByteArray() << int(Kind::NotJson);
    QTest::newRow("cut") << QByteArray(R"({"code":0,"data":{"answers":["a)") << int(Kind::NotJson);
    QTest::newRow("working") << QByteArray(R"({"code":1})") << int(Kind::Working);
    QTest::newRow("failed") << QByteArray(R"({"code":2})") << int(Kind::Failed);
    QTest::newRow("failed, negative") << QByteArray(R"({"code":-1})") << int(Kind::Failed);
    QTest::newRow("no data") << QByteArray(R"({"code":0})") << int(Kind::NoAnswers);
    QTest::newRow("no code, no data") << QByteArray("{}") << int(Kind::NoAnswers);
    QTest::newRow("an array") << QByteArray("[]") << int(Kind::NoAnswers);
    QTest::newRow("answers empty") << QByteArray(R"({"code":0,"data":{"answers":[]}})") << int(Kind::EmptyAnswers);
    QTest::newRow("answers a number") << QByteArray(R"({"code":0,"data":{"answers":3}})") << int(Kind::EmptyAnswers);
    QTest::newRow("ready") << QByteArray(R"({"code":0,"data":{"answers":["a"]}})") << int(Kind::Ready);
    QTest::newRow("ready, no code") << QByteArray(R"({"data":{"answers":["a"]}})") << int(Kind::Ready);
}

void ServiceMessagesTest::resultReply()
{
    QFETCH(QByteArray, body);
    QFETCH(int, kind);
    QCOMPARE(int(readResultReply(body).kind), kind);
}

void ServiceMessagesTest::resultReplyDetails()
{
    const ResultReply ready =
        readResultReply(R"({"code":0,"data":{"answers":["a","b"],"description":"d","agentCmds":[{"cmdType":0},5]}})");
    QCOMPARE(ready.answer, QStringLiteral("a"));
    QCOMPARE(ready.description, QStringLiteral("d"));
    QCOMPARE(ready.agentCmds.size(), 2);

    const ResultReply bare = readResultReply(R"({"code":0,"data":{"answers":["a"]}})");
    QVERIFY(bare.description.isEmpty());
    QVERIFY(bare.agentCmds.isEmpty());
    QCOMPARE(readResultReply(R"({"code":4,"message":"m"})").message, QStringLiteral("m"));
}

void ServiceMessagesTest::firstAnswerOfAnotherTypeIsEmpty_data()
{
    QTest::addColumn<QByteArray>("answer");
    for (const char *answer : {"5", "null", "true", "{\"a\":1}", "[\"a\"]"})
        QTest::newRow(answer) << QByteArray(answer);
}

void ServiceMessagesTest::firstAnswerOfAnotherTypeIsEmpty()
{
    QFETCH(QByteArray, answer);
    const ResultReply reply = readResultReply("{\"code\":0,\"data\":{\"answers\":[" + answer + ",\"second\"]}}");
    QVERIFY(reply.kind == ResultReply::Kind::Ready);
    QVERIFY(reply.answer.isEmpty());
}

void ServiceMessagesTest::agentCommandsOfAnotherTypeAreNone_data()
{
    QTest::addColumn<QByteArray>("commands");
    for (const char *commands : {"5", "null", "\"x\"", "{\"cmdType\":1}", "[]"})
        QTest::newRow(commands) << QByteArray(commands);
}

void ServiceMessagesTest::agentCommandsOfAnotherTypeAreNone()
{
    QFETCH(QByteArray, commands);
    const ResultReply reply =
        readResultReply("{\"code\":0,\"data\":{\"answers\":[\"a\"],\"agentCmds\":" + commands + "}}");
    QVERIFY(reply.kind == ResultReply::Kind::Ready);
    QVERIFY(reply.agentCmds.isEmpty());
}

void ServiceMessagesTest::manyNestedArraysAreNoDocument()
{
    const QByteArray nested = QByteArray(100000, '[') + QByteArray(100000, ']');
    QVERIFY(readGenerationReply(nested).kind == GenerationReply::Kind::NotJson);
    QVERIFY(readResultReply(nested).kind == ResultReply::Kind::NotJson);
}

QTEST_GUILESS_MAIN(ServiceMessagesTest)
#include "tst_servicemessages.moc"
