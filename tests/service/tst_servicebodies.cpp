#include "duplicatekeys.h"
#include "replies.h"
#include "requestbodies.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace tavro::assistantservice;

namespace {

QJsonObject textBody()
{
    const QJsonObject question{{QStringLiteral("type"), false}, {QStringLiteral("content"), QStringLiteral("hi")}};
    const QJsonObject item{{QStringLiteral("id"), QStringLiteral("m1")},
                           {QStringLiteral("name"), QStringLiteral("Harbour")}};
    return {{QStringLiteral("enableDS"), true},
            {QStringLiteral("enableNet"), false},
            {QStringLiteral("messages"), QJsonArray{question}},
            {QStringLiteral("mediaList"), QJsonArray{item}}};
}

QJsonObject pictureBody()
{
    return {{QStringLiteral("style"), QStringLiteral("Monet")},
            {QStringLiteral("width"), 640},
            {QStringLiteral("height"), 360},
            {QStringLiteral("useSR"), true},
            {QStringLiteral("content"), QStringLiteral("sea")},
            {QStringLiteral("enableLogo"), false},
            {QStringLiteral("logoPositon"), 0},
            {QStringLiteral("logoLanguage"), false},
            {QStringLiteral("logoOpacity"), 0.3499999940395355},
            {QStringLiteral("logoContent"), QStringLiteral("width")}};
}

QByteArray bytes(const QJsonObject &object)
{
    return QJsonDocument(object).toJson();
}

QByteArray with(QJsonObject object, const char *key, const QJsonValue &value)
{
    object.insert(QLatin1String(key), value);
    return bytes(object);
}

QByteArray without(QJsonObject object, const char *key)
{
    object.remove(QLatin1String(key));
    return bytes(object);
}

QJsonArray messages(std::initializer_list<QJsonValue> entries)
{
    return QJsonArray(entries);
}

void bodyColumns()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("message");
}

void bodyRow(const char *name, const QByteArray &body, const char *message, ErrorCode code = ErrorCode::BadRequest)
{
    QTest::newRow(name) << body << static_cast<int>(code) << QString::fromUtf8(message);
}

void checkError(const ServiceError &error)
{
    QFETCH(int, code);
    QFETCH(QString, message);
    QCOMPARE(static_cast<int>(error.code), code);
    QVERIFY2(error.message.contains(message), qPrintable(error.message));
}

} // namespace

class ServiceBodiesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void noticesRepeatedMembers_data();
    void noticesRepeatedMembers();
    void refusesRepeatedMembers_data();
    void refusesRepeatedMembers();
    void ignoresOtherMembers();
    void countsAsTheInterfaceDoes();
    void readsAWholeTextRequest();
    void readsAWholePictureRequest();
    void readsAPoll();
    void refusesTextRequests_data();
    void refusesTextRequests();
    void refusesPictureRequests_data();
    void refusesPictureRequests();
    void refusesPolls_data();
    void refusesPolls();
    void repliesHaveTheInterfacesForm();
};

void ServiceBodiesTest::readsAWholeTextRequest()
{
    TextRequest request;
    QVERIFY(!readTextRequest(bytes(textBody()), {}, request));
    QVERIFY(request.deepModel);
    QVERIFY(!request.onlineSearch);
    QCOMPARE(request.messages.size(), 1);
    QCOMPARE(request.messages[0].content, QStringLiteral("hi"));
    QCOMPARE(request.mediaList.size(), 1);
    QCOMPARE(request.mediaList[0].id, QStringLiteral("m1"));
    QCOMPARE(request.mediaList[0].name, QStringLiteral("Harbour"));
}

void ServiceBodiesTest::readsAWholePictureRequest()
{
    PictureRequest request;
    QVERIFY(!readPictureRequest(bytes(pictureBody()), {}, request));
    QCOMPARE(request.style, QStringLiteral("Monet"));
    QCOMPARE(request.size, QSize(640, 360));
    QCOMPARE(request.prompt, QStringLiteral("sea"));
    QVERIFY(request.superResolution);
    QCOMPARE(request.logoText, QStringLiteral("width"));
}

void ServiceBodiesTest::readsAPoll()
{
    PollRequest request;
    QVERIFY(!readPollRequest("{\"type\":true,\"reqId\":\"abc\"}", request));
    QVERIFY(request.picture);
    QCOMPARE(request.requestId, QStringLiteral("abc"));
}

void ServiceBodiesTest::refusesTextRequests_data()
{
    const QJsonObject good = textBody();
    const QJsonObject user{{QStringLiteral("type"), false}, {QStringLiteral("content"), QStringLiteral("hi")}};
    const QJsonObject assistant{{QStringLiteral("type"), true}, {QStringLiteral("content"), QStringLiteral("hi")}};
    const QJsonObject longOne{{QStringLiteral("type"), false},
                              {QStringLiteral("content"), QString(100001, QLatin1Char('x'))}};
    bodyColumns();
    bodyRow("empty", "", "not valid JSON");
    bodyRow("broken", "{\"enableDS\":", "not valid JSON");
    bodyRow("array", "[]", "must be a JSON object");
    bodyRow("text", "\"enableDS\"", "must be a JSON object");
    bodyRow("number", "5", "must be a JSON object");
    bodyRow("more than one", bytes(good) + "{}", "not valid JSON (at byte");
    bodyRow("cut short", bytes(good).chopped(3), "unexpected end of input");
    bodyRow("comma at the end", "{\"a\":1,}", "not valid JSON");
    bodyRow("no UTF-8", bytes(good).replace("hi", "h\xff"), "ill-formed UTF-8");
    bodyRow("no UTF-8 where nobody looks", bytes(good).replace(0, 1, "{\"x\":\"\xc3\x28\","), "not valid JSON");
    bodyRow("number beyond all numbers", "{\"x\":1e999}", "not valid JSON");
    bodyRow("nested too deeply", "{\"x\":" + QByteArray(2000, '[') + QByteArray(2000, ']') + '}', "nested too deeply");
    bodyRow("first of two wrong members",
            with(QJsonDocument::fromJson(without(good, "mediaList")).object(), "messages", 1),
            "\"messages\" must be a list");
    bodyRow("wrong entry behind a missing member",
            with(QJsonDocument::fromJson(without(good, "mediaList")).object(), "messages", messages({1})),
            "\"mediaList\" is missing");
    bodyRow("list in a list", with(good, "messages", messages({messages({user})})),
            "\"messages[0]\" must be an object");
    bodyRow("first of two wrong entries", with(good, "messages", messages({user, 1, QJsonObject(), user})),
            "\"messages[1]\" must be an object");
    bodyRow("no flag", without(good, "enableDS"), "\"enableDS\" is missing");
    bodyRow("flag as text", with(good, "enableNet", QStringLiteral("true")), "\"enableNet\" must be true or false");
    bodyRow("no messages", without(good, "messages"), "\"messages\" is missing");
    bodyRow("messages as object", with(good, "messages", QJsonObject()), "\"messages\" must be a list");
    bodyRow("empty messages", with(good, "messages", QJsonArray()), "there is no question");
    bodyRow("message as text", with(good, "messages", messages({QStringLiteral("hi")})),
            "\"messages[0]\" must be an object");
    bodyRow("message without type",
            with(good, "messages", messages({user, QJsonObject{{QStringLiteral("content"), QStringLiteral("x")}}})),
            "\"messages[1].type\" is missing");
    bodyRow("answer last", with(good, "messages", messages({user, assistant})), "must be the user's question");
    bodyRow("too long message", with(good, "messages", messages({longOne})), "longer than 100000");
    bodyRow("no media list", without(good, "mediaList"), "\"mediaList\" is missing");
    bodyRow("media id as number",
            with(good, "mediaList",
                 messages({QJsonObject{{QStringLiteral("id"), 5}, {QStringLiteral("name"), QStringLiteral("x")}}})),
            "\"mediaList[0].id\" must be a text");
}

void ServiceBodiesTest::refusesTextRequests()
{
    QFETCH(QByteArray, body);
    TextRequest request;
    checkError(readTextRequest(body, {}, request));
}

void ServiceBodiesTest::refusesPictureRequests_data()
{
    const QJsonObject good = pictureBody();
    bodyColumns();
    const QStringList keys = good.keys();
    for (const QString &key : keys) {
        const QByteArray name = key.toUtf8();
        bodyRow(("no " + name).constData(), without(good, name.constData()),
                ("\"" + name + "\" is missing").constData());
        bodyRow((name + " null").constData(), with(good, name.constData(), QJsonValue::Null),
                ("\"" + name + "\" must be").constData());
    }
    bodyRow("width with a fraction", with(good, "width", 640.5), "\"width\" must be a whole number");
    bodyRow("width as text", with(good, "width", QStringLiteral("640")), "\"width\" must be a whole number");
    bodyRow("width of no int", with(good, "width", 1e15), "\"width\" must be from");
    bodyRow("too narrow", with(good, "width", 15), "too small: at least 16 x 16");
    bodyRow("negative", with(good, "height", -360), "too small");
    bodyRow("too wide", with(good, "width", 7681), "at most 7680 x 4320", ErrorCode::TooLarge);
    bodyRow("too high", with(good, "height", 4321), "at most 7680 x 4320", ErrorCode::TooLarge);
    bodyRow("position too large", with(good, "logoPositon", 256), "\"logoPositon\" must be from 0 to 255");
    bodyRow("opacity too large", with(good, "logoOpacity", 1.01), "\"logoOpacity\" must be from 0 to 1");
    bodyRow("long prompt", with(good, "content", QString(10001, QLatin1Char('x'))), "longer than 10000");
}

void ServiceBodiesTest::refusesPictureRequests()
{
    QFETCH(QByteArray, body);
    PictureRequest request;
    checkError(readPictureRequest(body, {}, request));
}

void ServiceBodiesTest::refusesPolls_data()
{
    bodyColumns();
    bodyRow("no type", "{\"reqId\":\"a\"}", "\"type\" is missing");
    bodyRow("type as number", "{\"type\":1,\"reqId\":\"a\"}", "\"type\" must be true or false");
    bodyRow("no id", "{\"type\":true}", "\"reqId\" is missing");
    bodyRow("id as number", "{\"type\":true,\"reqId\":7}", "\"reqId\" must be a text");
    bodyRow("long id", "{\"type\":true,\"reqId\":\"" + QByteArray(101, 'a') + "\"}", "longer than 100");
    bodyRow("deep nesting", QByteArray(3000, '['), "not valid JSON");
}

void ServiceBodiesTest::refusesPolls()
{
    QFETCH(QByteArray, body);
    PollRequest request;
    checkError(readPollRequest(body, request));
}

void ServiceBodiesTest::repliesHaveTheInterfacesForm()
{
    QCOMPARE(acceptedReply(QStringLiteral("r1")).body,
             QByteArray("{\"code\":0,\"data\":{\"reqId\":\"r1\"},\"message\":\"\"}"));
    QCOMPARE(QJsonDocument::fromJson(workingReply().body)[QLatin1String("code")].toInt(-1), 1);
    const ServiceError busy{ErrorCode::Busy, QStringLiteral("later")};
    QCOMPARE(errorReply(busy).body, QByteArray("{\"code\":429,\"message\":\"later\"}"));
    QCOMPARE(errorReply(busy).status, 200);
    QCOMPARE(httpErrorReply(busy).status, 429);
    PollResult ready;
    ready.answer = QStringLiteral("text");
    const QJsonObject text = QJsonDocument::fromJson(readyReply(ready, {}).body).object();
    QCOMPARE(text[QLatin1String("data")][QLatin1String("answers")].toArray(), QJsonArray{QStringLiteral("text")});
    const QJsonObject picture = QJsonDocument::fromJson(readyReply(ready, QStringLiteral("http://x/1")).body).object();
    QCOMPARE(picture[QLatin1String("data")][QLatin1String("answers")].toArray(),
             QJsonArray{QStringLiteral("http://x/1")});
}

// Refused, not taken as the last of the two says: the parser loses the memory of the first.
void ServiceBodiesTest::noticesRepeatedMembers_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("repeats");
    const auto row = [](const char *json, bool repeats) { QTest::newRow(json) << QByteArray(json) << repeats; };
    row("{\"a\":[],\"a\":[]}", true);
    row("{\"a\":{},\"b\":1,\"a\":1}", true);
    row("{ \"a\" : [1, {\"c\": 2}] , \"\\u0061\" : 1 }", true);
    row("[{\"x\":{\"a\":[],\"a\":2}}]", true);
    row("{\"a\":[{\"a\":[]}],\"b\":{\"a\":[]}}", false);
    row("[{\"a\":[]},{\"a\":[]}]", false);
    row("{\"a\":1,\"a\":2}", false);
    row("{\"a\":\"{\\\"a\\\":[\",\"b\":[\"a\"],\"c\":[\"a\"]}", false);
    row("{\"a\":[],\"b", false);
    row("{\"a\":[],\"a\\", false);
    row("]}\"", false);
}

void ServiceBodiesTest::noticesRepeatedMembers()
{
    QFETCH(QByteArray, json);
    QTEST(repeatsContainerKey(json), "repeats");
}

void ServiceBodiesTest::refusesRepeatedMembers_data()
{
    QTest::addColumn<QByteArray>("was");
    QTest::addColumn<QByteArray>("is");
    const auto row = [](const char *name, const char *was, const char *is) {
        QTest::newRow(name) << QByteArray(was) << QByteArray(is);
    };
    row("list", "\"enableDS\"", "\"messages\":[],\"enableDS\"");
    row("scalar", "\"enableDS\"", "\"enableDS\":true,\"enableDS\"");
    row("with an escape", "\"enableDS\"", "\"enable\\u0044S\":true,\"enableDS\"");
    row("in an entry", "\"id\"", "\"id\":\"x\",\"id\"");
    row("in an entry, of another kind", "\"content\"", "\"content\":{},\"content\"");
}

void ServiceBodiesTest::refusesRepeatedMembers()
{
    QFETCH(QByteArray, was);
    QFETCH(QByteArray, is);
    TextRequest request;
    const QByteArray body = bytes(textBody()).replace(was, is);
    const ServiceError error = readTextRequest(body, {}, request);
    QCOMPARE(error.code, ErrorCode::BadRequest);
    QVERIFY2(error.message.contains(QStringLiteral("twice")), qPrintable(error.message));
}

void ServiceBodiesTest::ignoresOtherMembers()
{
    const QByteArray other = "\"other\":[1,{\"messages\":null,\"messages\":[{}]},[]],\"other\":{\"type\":5},\"\":null,";
    QByteArray body = bytes(textBody());
    body.insert(body.indexOf('{') + 1, other);
    body.replace("\"id\"", other + "\"id\"");
    body.replace("\"content\"", other + "\"content\"");
    TextRequest request;
    const ServiceError error = readTextRequest(body, {}, request);
    QVERIFY2(!error, qPrintable(error.message));
    QCOMPARE(request.messages.size(), 1);
    QCOMPARE(request.messages[0].content, QStringLiteral("hi"));
    QCOMPARE(request.mediaList.value(0).name, QStringLiteral("Harbour"));
}

// Lengths are those of the panel's texts, in which an emoji counts twice; a list may be as long as its limit.
void ServiceBodiesTest::countsAsTheInterfaceDoes()
{
    BodyLimits limits;
    limits.messageLength = 4;
    limits.messages = 2;
    const auto codeFor = [&limits](int count, const char *text) {
        QJsonArray list;
        for (int i = 0; i < count; ++i) {
            list.append(
                QJsonObject{{QStringLiteral("type"), false}, {QStringLiteral("content"), QString::fromUtf8(text)}});
        }
        TextRequest request;
        return readTextRequest(with(textBody(), "messages", list), limits, request).message;
    };
    QCOMPARE(codeFor(2, "四个汉字"), QString());
    QCOMPARE(codeFor(1, "😀😀"), QString());
    QVERIFY(codeFor(1, "😀😀x").contains(QStringLiteral("longer than 4 characters")));
    QVERIFY(codeFor(3, "x").contains(QStringLiteral("\"messages\" holds more than 2 entries")));
}

QTEST_GUILESS_MAIN(ServiceBodiesTest)
#include "tst_servicebodies.moc"
