#include "rawclient.h"
#include "serviceprocess.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>
#include <QtTest>

#include <csignal>
#include <memory>
#include <vector>

namespace {

const QByteArray textPath = QByteArrayLiteral("/ai/texttotext/generate/");
const QByteArray picturePath = QByteArrayLiteral("/ai/texttoimage/generate/");
const QByteArray pollPath = QByteArrayLiteral("/ai/result/filter/");
const QByteArray mebibyteMore(1024 * 1024 + 1, ' ');
// Longer than any test lasts: such a request is never ready.
const QStringList endlessWork{QStringLiteral("--work-ms"), QStringLiteral("3600000")};

QByteArray question(const QByteArray &text)
{
    return "{\"enableDS\":false,\"enableNet\":false,\"messages\":[{\"type\":false,\"content\":\"" + text
        + "\"}],\"mediaList\":[{\"id\":\"m1\",\"name\":\"Harbour\"}]}";
}

QByteArray pictureWish(const QByteArray &prompt, int width = 64, int height = 36)
{
    return "{\"style\":\"Monet\",\"width\":" + QByteArray::number(width) + ",\"height\":" + QByteArray::number(height)
        + ",\"useSR\":true,\"content\":\"" + prompt
        + "\",\"enableLogo\":false,\"logoPositon\":0,\"logoLanguage\":false,\"logoOpacity\":0.35,\"logoContent\":"
          "\"width\"}";
}

QByteArray poll(bool picture, const QString &id)
{
    return QByteArray("{\"type\":") + (picture ? "true" : "false") + ",\"reqId\":\"" + id.toLatin1() + "\"}";
}

int codeOf(const QJsonObject &reply)
{
    return reply[QLatin1String("code")].toInt(-1);
}

QString messageOf(const QJsonObject &reply)
{
    return reply[QLatin1String("message")].toString();
}

QString requestIdOf(const QJsonObject &reply)
{
    return reply[QLatin1String("data")][QLatin1String("reqId")].toString();
}

QString firstAnswerOf(const QJsonObject &reply)
{
    return reply[QLatin1String("data")][QLatin1String("answers")][0].toString();
}

// One question after the other over one connection.
class Client {
public:
    explicit Client(const ServiceProcess &service, const QByteArray &headers = {})
        : m_raw(service.port())
        , m_headers(headers)
    { }

    QJsonObject post(const QByteArray &path, const QByteArray &body)
    {
        m_raw.send(postBytes(path, body, m_headers));
        return jsonOf(m_raw.readReply());
    }

    QByteArray get(const QByteArray &path)
    {
        m_raw.send(getBytes(path));
        return m_raw.readReply();
    }

    // Polls again and again, as often as the reply is "still working".
    QJsonObject result(bool picture, const QString &id)
    {
        QJsonObject reply = post(pollPath, poll(picture, id));
        while (codeOf(reply) == 1) {
            reply = post(pollPath, poll(picture, id));
        }
        return reply;
    }

    QJsonObject picture(const QByteArray &body) { return result(true, requestIdOf(post(picturePath, body))); }

private:
    RawClient m_raw;
    QByteArray m_headers;
};

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
    void refusesABodyThatIsTooLarge_data();
    void refusesABodyThatIsTooLarge();
    void refusesWhatTheQueueDoesNotHold();
    void needsTheToken_data();
    void needsTheToken();
    void takesTheTokenFromTheEnvironment();
    void answersManyClientsAtOnce();
    void idleConnectionsGiveWay();
    void keepsAConnectionForManyRequests();
    void slowClientsLoseTheirConnection_data();
    void slowClientsLoseTheirConnection();
    void logsOneLinePerRequestAndNoSecrets();
    void stopsOnSignal_data();
    void stopsOnSignal();
    void stopsWhileItDraws();
    void aSecondServiceCannotTakeThePort();
    void endsWithAMessageOnBadOptions();
    void printsItsVersion();
};

void ServiceHttpTest::answersATextQuestion()
{
    ServiceProcess service;
    QVERIFY(service.start());
    Client client(service);
    const QJsonObject reply =
        client.result(false, requestIdOf(client.post(textPath, question("play harbour on layer 2"))));
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
    Client client(service);
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
    Client client(service);
    const QString id = requestIdOf(client.post(textPath, question("stop layer 1")));
    QCOMPARE(codeOf(client.result(false, id)), 0);
    QCOMPARE(client.result(false, id), client.result(false, id));
    QCOMPARE(codeOf(client.post(pollPath, poll(true, id))), 409);
}

void ServiceHttpTest::everyPictureHasAnAddressOfItsOwn()
{
    ServiceProcess service;
    QVERIFY(service.start());
    Client client(service);
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
    Client client(service);
    const QString id = requestIdOf(client.post(picturePath, pictureWish("sea")));
    QVERIFY(firstAnswerOf(client.result(true, id)).startsWith(QStringLiteral("http://127.0.0.1/pictures/")));
    const auto addressFor = [&](const QByteArray &host) {
        RawClient raw(service.port());
        raw.send("POST " + pollPath + " HTTP/1.1\r\nHost: " + host
                 + "\r\nContent-Length: " + QByteArray::number(poll(true, id).size()) + "\r\n\r\n" + poll(true, id));
        return firstAnswerOf(jsonOf(raw.readReply()));
    };
    QVERIFY(addressFor("playout-3:8080").startsWith(QStringLiteral("http://playout-3:8080/pictures/")));
    QVERIFY(addressFor("evil/<x>").startsWith(QStringLiteral("http://127.0.0.1:")));
}

void ServiceHttpTest::pictureAddressesFollowThePublicUrl()
{
    ServiceProcess service;
    QVERIFY(service.start({QStringLiteral("--public-url"), QStringLiteral("https://a.example/ai/")}));
    Client client(service);
    const QString address = firstAnswerOf(client.picture(pictureWish("sea")));
    QVERIFY2(address.startsWith(QStringLiteral("https://a.example/ai/pictures/")), qPrintable(address));
}

void ServiceHttpTest::tellsItsHealth()
{
    ServiceProcess service;
    QVERIFY(service.start());
    const QByteArray reply = Client(service).get("/healthz");
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
    row("broken JSON", postBytes(textPath, "{"), 200, 400, "not valid JSON");
    row("missing member", postBytes(textPath, "{}"), 200, 400, "\"enableDS\" is missing");
    row("wrong member", postBytes(picturePath, pictureWish("sea").replace("true", "1")), 200, 400, "\"useSR\" must be");
    row("small picture", postBytes(picturePath, pictureWish("sea", 8, 8)), 200, 400, "too small");
    row("large picture", postBytes(picturePath, pictureWish("sea", 7681, 36)), 200, 413, "too large");
    row("unknown request", postBytes(pollPath, poll(false, QStringLiteral("nonsense"))), 200, 404, "not known here");
    row("no body", "POST " + pollPath + " HTTP/1.1\r\nHost: x\r\nContent-Length: 0\r\n\r\n", 200, 400,
        "not valid JSON");
    row("form", postBytes(pollPath, "--b\r\n\r\n--b--").replace("application/json", "multipart/form-data; boundary=b"),
        200, 400, "must be JSON");
    row("unknown path", getBytes("/nothing"), 404, 404, "nothing at this address");
    row("post to an unknown path", postBytes("/nothing", "{}"), 404, 404, "nothing at this address");
    row("path without its end", postBytes("/ai/texttotext/generate", "{}"), 404, 404, "nothing at this address");
    row("get instead of post", getBytes(textPath), 405, 405, "POST requests only");
    row("post instead of get", postBytes("/healthz", "{}"), 405, 405, "GET requests only");
    row("unknown picture", getBytes("/pictures/nonsense"), 404, 404, "no such picture");
    row("malformed", "garbage\r\n\r\n", 400, 400, "cannot read this HTTP request");
    row("wrong version", "GET /healthz HTTP/9.9\r\n\r\n", 400, 400, "cannot read this HTTP request");
    row("endless address", "GET /" + QByteArray(9000, 'x') + " HTTP/1.1\r\nHost: x\r\n\r\n", 414, 414,
        "cannot read this HTTP request");
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
    QCOMPARE(statusOf(Client(service).get("/healthz")), 200);
}

void ServiceHttpTest::refusesABodyThatIsTooLarge_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("with its length") << postBytes(textPath, mebibyteMore);
    QTest::newRow("in chunks") << "POST " + textPath + " HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\n"
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
    QVERIFY(service.start(endlessWork + QStringList{QStringLiteral("--queue"), QStringLiteral("1")}));
    Client client(service);
    const QJsonObject first = client.post(textPath, question("stop layer 1"));
    QCOMPARE(codeOf(first), 0);
    QCOMPARE(codeOf(client.post(pollPath, poll(false, requestIdOf(first)))), 1);
    const QJsonObject second = client.post(picturePath, pictureWish("sea"));
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
    Client client(service, headers);
    QTEST(codeOf(client.post(textPath, question("stop layer 1"))), "code");
    QTEST(codeOf(client.post(picturePath, pictureWish("sea"))), "code");
    QCOMPARE(codeOf(client.post(pollPath, poll(false, QStringLiteral("x")))) == 401,
             QTest::currentDataTag() != QByteArray("right"));
}

void ServiceHttpTest::takesTheTokenFromTheEnvironment()
{
    ServiceProcess service;
    service.setEnvironment(QStringLiteral("ASSISTANTSERVICE_TOKEN"), QStringLiteral("secret-word"));
    QVERIFY(service.start());
    QCOMPARE(codeOf(Client(service).post(textPath, question("x"))), 401);
    QCOMPARE(codeOf(Client(service, "token: secret-word\r\n").post(textPath, question("x"))), 0);
}

void ServiceHttpTest::answersManyClientsAtOnce()
{
    constexpr int count = 50;
    ServiceProcess service;
    QVERIFY(service.start());
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < count; ++i) {
        clients.push_back(std::make_unique<RawClient>(service.port()));
    }
    for (int i = 0; i < count; ++i) {
        clients[static_cast<size_t>(i)]->send(postBytes(textPath, question("stop layer " + QByteArray::number(i + 1))));
    }
    QSet<QString> ids;
    for (int i = 0; i < count; ++i) {
        const QString id = requestIdOf(jsonOf(clients[static_cast<size_t>(i)]->readReply()));
        QVERIFY(!id.isEmpty());
        ids.insert(id);
        const QString answer = firstAnswerOf(Client(service).result(false, id));
        QCOMPARE(answer, QStringLiteral("Stopping layer %1.").arg(i + 1));
    }
    QCOMPARE(ids.size(), count);
}

// More open connections than threads: the idle ones must not keep a new client out.
void ServiceHttpTest::idleConnectionsGiveWay()
{
    ServiceProcess service;
    QVERIFY(service.start());
    std::vector<std::unique_ptr<Client>> clients;
    for (int i = 0; i < 150; ++i) {
        clients.push_back(std::make_unique<Client>(service));
        QCOMPARE(statusOf(clients.back()->get("/healthz")), 200);
    }
}

void ServiceHttpTest::keepsAConnectionForManyRequests()
{
    ServiceProcess service;
    QVERIFY(service.start());
    Client client(service);
    for (int i = 0; i < 30; ++i) {
        QCOMPARE(statusOf(client.get("/healthz")), 200);
    }
}

void ServiceHttpTest::slowClientsLoseTheirConnection_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("says nothing") << QByteArray();
    QTest::newRow("half a head") << QByteArray("POST /ai/result/filter/ HTTP/1.1\r\nHost:");
    QTest::newRow("half a body") << QByteArray(
        "POST /ai/result/filter/ HTTP/1.1\r\nHost: x\r\nContent-Length: 50\r\n\r\n{\"type\"");
    QTest::newRow("endless head") << "GET /healthz HTTP/1.1\r\n"
            + QByteArray("X-Filler: abcdefghijklmnopqrstuvwxyz\r\n").repeated(4000);
}

void ServiceHttpTest::slowClientsLoseTheirConnection()
{
    QFETCH(QByteArray, request);
    ServiceProcess service;
    QVERIFY(service.start({QStringLiteral("--client-seconds"), QStringLiteral("1")}));
    RawClient slow(service.port());
    slow.send(request);
    QVERIFY(slow.waitForClose());
    QCOMPARE(statusOf(Client(service).get("/healthz")), 200);
}

void ServiceHttpTest::logsOneLinePerRequestAndNoSecrets()
{
    ServiceProcess service;
    service.setEnvironment(QStringLiteral("ASSISTANTSERVICE_TOKEN"), QStringLiteral("secret-word"));
    QVERIFY(service.start());
    Client client(service, "token: secret-word\r\n");
    const QString id = requestIdOf(client.post(textPath, question("a private question")));
    client.result(false, id);
    client.get("/secret-path");
    const QString address = firstAnswerOf(client.picture(pictureWish("a private picture")));
    client.get(QUrl(address).path().toLatin1());
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
    const QByteArray log = service.standardError();
    QVERIFY2(
        log.contains("event=request id=" + id.toLatin1() + " endpoint=/ai/texttotext/generate/ status=200 code=0 ms="),
        log.constData());
    QCOMPARE(log.count("endpoint=other status=404"), 1);
    QCOMPARE(log.count("endpoint=/pictures/ status=200"), 1);
    QVERIFY(!log.contains("secret"));
    QVERIFY(!log.contains("private"));
    QVERIFY(!log.contains(address.section(QLatin1Char('/'), -1).toLatin1()));
}

void ServiceHttpTest::stopsOnSignal_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
}

void ServiceHttpTest::stopsOnSignal()
{
    QFETCH(int, number);
    ServiceProcess service;
    QVERIFY(service.start(endlessWork));
    Client idle(service);
    QCOMPARE(codeOf(idle.post(textPath, question("stop layer 1"))), 0);
    RawClient half(service.port());
    half.send("POST /ai/result/filter/ HTTP/1.1\r\nHost:");
    service.signal(number);
    QCOMPARE(service.exitCode(), 0);
}

void ServiceHttpTest::stopsWhileItDraws()
{
    ServiceProcess service;
    QVERIFY(service.start());
    Client client(service);
    const QString id = requestIdOf(client.post(picturePath, pictureWish("sea", 7680, 4320)));
    QCOMPARE(codeOf(client.post(pollPath, poll(true, id))), 1);
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
}

void ServiceHttpTest::aSecondServiceCannotTakeThePort()
{
    ServiceProcess first;
    QVERIFY(first.start());
    ServiceProcess second;
    const QString address = QStringLiteral("127.0.0.1:%1").arg(first.port());
    QCOMPARE(second.runToEnd({QStringLiteral("--listen"), address}), 1);
    QVERIFY(second.standardError().contains("cannot listen on http://" + address.toLatin1()));
}

void ServiceHttpTest::endsWithAMessageOnBadOptions()
{
    ServiceProcess service;
    QCOMPARE(service.runToEnd({QStringLiteral("--engine"), QStringLiteral("other")}), 2);
    QVERIFY(service.standardError().contains("--engine must be builtin"));
}

void ServiceHttpTest::printsItsVersion()
{
    ServiceProcess service;
    QCOMPARE(service.runToEnd({QStringLiteral("--version")}), 0);
    QVERIFY(service.standardError().isEmpty());
}

QTEST_GUILESS_MAIN(ServiceHttpTest)
#include "tst_servicehttp.moc"
