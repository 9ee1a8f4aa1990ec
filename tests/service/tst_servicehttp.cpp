#include "serviceclient.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

namespace {

const QByteArray mebibyteMore(1024 * 1024 + 1, ' ');

} // namespace

class ServiceHttpTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void answersATextQuestion();
    void drawsAPicture();
    void aResultMayBePolledAgain();
    void everyPictureHasAnAddressOfItsOwn();
    void pictureAddressesFollowTheHostHeader();
    void pictureAddressesFollowThePublicUrl();
    void tellsItsHealth();
    void errorsHaveTheInterfacesForm_data();
    void errorsHaveTheInterfacesForm();
    void refusesWhatIsNotHttp_data();
    void refusesWhatIsNotHttp();
    void refusesABodyThatIsTooLarge_data();
    void refusesABodyThatIsTooLarge();
    void refusesWhatTheQueueDoesNotHold();
    void needsTheToken_data();
    void needsTheToken();
    void takesTheTokenFromTheEnvironment();
};

void ServiceHttpTest::answersATextQuestion()
{
    ServiceProcess service;
    QVERIFY(service.start());
    ServiceClient client(service);
    const QJsonObject reply =
        client.result(false, requestIdOf(client.post(paths::text, question("play harbour on layer 2"))));
    QCOMPARE(codeOf(reply), 0);
    QCOMPARE(firstAnswerOf(reply), QStringLiteral("Playing Harbour on layer 2."));
    const QJsonArray commands = reply[QLatin1String("data")][QLatin1String("agentCmds")].toArray();
    QCOMPARE(QJsonDocument(commands).toJson(QJsonDocument::Compact),
             QByteArray("[{\"cmdType\":0,\"params\":{\"bPlay\":true,\"layerId\":2,\"mediaId\":\"m1\"}}]"));
}

void ServiceHttpTest::drawsAPicture()
{
    ServiceProcess service;
    QVERIFY(service.start());
    ServiceClient client(service);
    const QJsonObject reply = client.picture(pictureWish("sea", 80, 48));
    QCOMPARE(codeOf(reply), 0);
    QVERIFY(!reply[QLatin1String("data")][QLatin1String("description")].toString().isEmpty());
    const QByteArray fetched = client.get(QUrl(firstAnswerOf(reply)).path().toLatin1());
    QCOMPARE(statusOf(fetched), 200);
    QVERIFY(fetched.contains("Content-Type: image/png"));
    QImage image;
    QVERIFY(image.loadFromData(bodyOf(fetched)));
    QCOMPARE(image.size(), QSize(80, 48));
}

void ServiceHttpTest::aResultMayBePolledAgain()
{
    ServiceProcess service;
    QVERIFY(service.start());
    ServiceClient client(service);
    const QString id = requestIdOf(client.post(paths::text, question("stop layer 1")));
    QCOMPARE(codeOf(client.result(false, id)), 0);
    QCOMPARE(client.result(false, id), client.result(false, id));
    QCOMPARE(codeOf(client.post(paths::poll, poll(true, id))), 409);
}

void ServiceHttpTest::everyPictureHasAnAddressOfItsOwn()
{
    ServiceProcess service;
    QVERIFY(service.start());
    ServiceClient client(service);
    const QString first = firstAnswerOf(client.picture(pictureWish("sea")));
    const QString second = firstAnswerOf(client.picture(pictureWish("sea")));
    QVERIFY(!first.isEmpty());
    QVERIFY(first != second);
    QCOMPARE(bodyOf(client.get(QUrl(first).path().toLatin1())), bodyOf(client.get(QUrl(second).path().toLatin1())));
}

void ServiceHttpTest::pictureAddressesFollowTheHostHeader()
{
    ServiceProcess service;
    QVERIFY(service.start());
    ServiceClient client(service);
    const QString id = requestIdOf(client.post(paths::picture, pictureWish("sea")));
    QVERIFY(firstAnswerOf(client.result(true, id)).startsWith(QStringLiteral("http://127.0.0.1/pictures/")));
    const auto addressFor = [&](const QByteArray &host) {
        RawClient raw(service.port());
        raw.send("POST " + paths::poll + " HTTP/1.1\r\nHost: " + host
                 + "\r\nContent-Type: application/json\r\nContent-Length: " + QByteArray::number(poll(true, id).size())
                 + "\r\n\r\n" + poll(true, id));
        return firstAnswerOf(jsonOf(raw.readReply()));
    };
    QVERIFY(addressFor("localhost:8080").startsWith(QStringLiteral("http://localhost:8080/pictures/")));
    QCOMPARE(addressFor("evil/<x>"), QString());
}

void ServiceHttpTest::pictureAddressesFollowThePublicUrl()
{
    ServiceProcess service;
    QVERIFY(service.start({QStringLiteral("--public-url"), QStringLiteral("https://a.example/ai/")}));
    ServiceClient client(service);
    const QString address = firstAnswerOf(client.picture(pictureWish("sea")));
    QVERIFY2(address.startsWith(QStringLiteral("https://a.example/ai/pictures/")), qPrintable(address));
}

void ServiceHttpTest::tellsItsHealth()
{
    ServiceProcess service;
    QVERIFY(service.start());
    const QByteArray reply = ServiceClient(service).get("/healthz");
    QCOMPARE(statusOf(reply), 200);
    QCOMPARE(jsonOf(reply)[QLatin1String("status")].toString(), QStringLiteral("ok"));
}

void ServiceHttpTest::errorsHaveTheInterfacesForm_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QByteArray &request, int status, int code, const char *message) {
        QTest::newRow(name) << request << status << code << QString::fromUtf8(message);
    };
    row("broken JSON", postBytes(paths::text, "{"), 200, 400, "not valid JSON");
    row("missing member", postBytes(paths::text, "{}"), 200, 400, "\"enableDS\" is missing");
    row("wrong member", postBytes(paths::picture, pictureWish("sea").replace("true", "1")), 200, 400,
        "\"useSR\" must be");
    row("small picture", postBytes(paths::picture, pictureWish("sea", 8, 8)), 200, 400, "too small");
    row("large picture", postBytes(paths::picture, pictureWish("sea", 7681, 36)), 200, 413, "too large");
    row("unknown request", postBytes(paths::poll, poll(false, QStringLiteral("nonsense"))), 200, 404, "not known here");
    row("no body", postBytes(paths::poll, {}), 200, 400, "not valid JSON");
    row("form",
        postBytes(paths::poll, "--b\r\n\r\n--b--").replace("application/json", "multipart/form-data; boundary=b"), 200,
        415, "application/json");
    row("foreign name", getBytes("/healthz").replace("127.0.0.1", "evil.example"), 421, 421, "evil.example");
    row("unknown path", getBytes("/nothing"), 404, 404, "nothing at this address");
    row("post to an unknown path", postBytes("/nothing", "{}"), 404, 404, "nothing at this address");
    row("path without its end", postBytes("/ai/texttotext/generate", "{}"), 404, 404, "nothing at this address");
    row("get instead of post", getBytes(paths::text), 405, 405, "POST requests only");
    row("post instead of get", postBytes("/healthz", "{}"), 405, 405, "GET requests only");
    row("unknown picture", getBytes("/pictures/nonsense"), 404, 404, "no such picture");
}

void ServiceHttpTest::errorsHaveTheInterfacesForm()
{
    QFETCH(QByteArray, request);
    QFETCH(QString, message);
    ServiceProcess service;
    QVERIFY(service.start());
    RawClient raw(service.port());
    raw.send(request);
    const QByteArray reply = raw.readReply();
    QTEST(statusOf(reply), "status");
    QVERIFY(reply.contains("Content-Type: application/json"));
    QTEST(codeOf(jsonOf(reply)), "code");
    QVERIFY2(messageOf(jsonOf(reply)).contains(message), reply.constData());
    QCOMPARE(statusOf(ServiceClient(service).get("/healthz")), 200);
}

void ServiceHttpTest::refusesWhatIsNotHttp_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("status");
    QTest::newRow("wrong version") << QByteArray("GET /healthz HTTP/9.9\r\n\r\n") << 505;
    QTest::newRow("header without a colon") << getBytes("/healthz").replace("Host:", "Host") << 400;
    QTest::newRow("endless address") << "GET /" + QByteArray(90000, 'x') + " HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n"
                                     << 414;
    QTest::newRow("not HTTP at all") << QByteArray("garbage\r\n\r\n") << 0;
}

void ServiceHttpTest::refusesWhatIsNotHttp()
{
    QFETCH(QByteArray, request);
    ServiceProcess service;
    QVERIFY(service.start());
    RawClient raw(service.port());
    raw.send(request);
    QTEST(statusOf(raw.readReply()), "status");
    QVERIFY(raw.waitForClose());
    QCOMPARE(statusOf(ServiceClient(service).get("/healthz")), 200);
}

void ServiceHttpTest::refusesABodyThatIsTooLarge_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("with its length") << postBytes(paths::text, mebibyteMore);
    QTest::newRow("in chunks") << "POST " + paths::text
            + " HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/json\r\nTransfer-Encoding: "
              "chunked\r\n\r\n"
            + QByteArray::number(mebibyteMore.size(), 16) + "\r\n" + mebibyteMore + "\r\n0\r\n\r\n";
}

void ServiceHttpTest::refusesABodyThatIsTooLarge()
{
    QFETCH(QByteArray, request);
    ServiceProcess service;
    QVERIFY(service.start({QStringLiteral("--max-body"), QStringLiteral("1")}));
    RawClient raw(service.port());
    raw.send(request);
    const QByteArray reply = raw.readReply();
    QCOMPARE(statusOf(reply), 200);
    QCOMPARE(codeOf(jsonOf(reply)), 413);
    QVERIFY(messageOf(jsonOf(reply)).contains(QStringLiteral("larger than 1048576 bytes")));
}

void ServiceHttpTest::refusesWhatTheQueueDoesNotHold()
{
    ServiceProcess service;
    QVERIFY(service.start(endlessWork() + QStringList{QStringLiteral("--queue"), QStringLiteral("1")}));
    ServiceClient client(service);
    const QJsonObject first = client.post(paths::text, question("stop layer 1"));
    QCOMPARE(codeOf(first), 0);
    QCOMPARE(codeOf(client.post(paths::poll, poll(false, requestIdOf(first)))), 1);
    const QJsonObject second = client.post(paths::picture, pictureWish("sea"));
    QCOMPARE(codeOf(second), 429);
    QVERIFY(messageOf(second).contains(QStringLiteral("try again")));
}

void ServiceHttpTest::needsTheToken_data()
{
    QTest::addColumn<QByteArray>("headers");
    QTest::addColumn<int>("code");
    QTest::newRow("none") << QByteArray() << 401;
    QTest::newRow("wrong") << QByteArray("token: other\r\n") << 401;
    QTest::newRow("longer") << QByteArray("token: secret-word2\r\n") << 401;
    QTest::newRow("right") << QByteArray("token: secret-word\r\n") << 0;
}

void ServiceHttpTest::needsTheToken()
{
    QFETCH(QByteArray, headers);
    ServiceProcess service;
    QVERIFY(service.start({QStringLiteral("--token"), QStringLiteral("secret-word")}));
    const auto post = [&](const QByteArray &path, const QByteArray &body) {
        return codeOf(ServiceClient(service, headers).post(path, body));
    };
    QTEST(post(paths::text, question("stop layer 1")), "code");
    QTEST(post(paths::picture, pictureWish("sea")), "code");
    QCOMPARE(post(paths::poll, poll(false, QStringLiteral("x"))) == 401,
             QTest::currentDataTag() != QByteArray("right"));
}

void ServiceHttpTest::takesTheTokenFromTheEnvironment()
{
    ServiceProcess service;
    service.setEnvironment(QStringLiteral("ASSISTANTSERVICE_TOKEN"), QStringLiteral("secret-word"));
    QVERIFY(service.start());
    QCOMPARE(codeOf(ServiceClient(service).post(paths::text, question("x"))), 401);
    QCOMPARE(codeOf(ServiceClient(service, "token: secret-word\r\n").post(paths::text, question("x"))), 0);
}

QTEST_GUILESS_MAIN(ServiceHttpTest)
#include "tst_servicehttp.moc"
