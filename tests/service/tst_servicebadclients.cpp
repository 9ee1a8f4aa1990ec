#include "serviceclient.h"

#include <QtTest>

#include <csignal>
#include <memory>
#include <vector>

namespace {

using Clients = std::vector<std::unique_ptr<RawClient>>;

Clients connectMany(const ServiceProcess &service, const QByteArray &request, int count = 100)
{
    Clients clients;
    for (int i = 0; i < count; ++i) {
        clients.push_back(std::make_unique<RawClient>(service.port()));
        clients.back()->send(request);
    }
    return clients;
}

QByteArray headOf(const QByteArray &headers)
{
    return "POST " + paths::text + " HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/json\r\n" + headers
        + "\r\n";
}

// A body that never comes is waited for longer than any test lasts.
QStringList patience()
{
    return {QStringLiteral("--client-seconds"), QStringLiteral("3600")};
}

} // namespace

// Clients that are slow, wrong or hostile.
class ServiceBadClientsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepNobodyWaiting_data();
    void keepNobodyWaiting();
    void giveWayWhereFilesAreFew();
    void areRefusedBeforeTheBody_data();
    void areRefusedBeforeTheBody();
    void withALengthThatIsNoneAreRefused_data();
    void withALengthThatIsNoneAreRefused();
    void sendNoMoreThanTheLimitsAllow_data();
    void sendNoMoreThanTheLimitsAllow();
    void sendNoMoreThanTheLimitsAllowInSmallChunks();
    void withoutATokenAreRefusedBeforeTheBody();
    void areToldToGoOnWithABodyThatFits();
    void doNotKeepTheServiceFromStopping_data();
    void doNotKeepTheServiceFromStopping();
    void areAnsweredInOrderWhenTheyDoNotWait();
    void withoutAHostHeaderGetTheServicesOwnAddress();
};

void ServiceBadClientsTest::keepNobodyWaiting_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("say nothing") << QByteArray();
    QTest::newRow("begin a head") << QByteArray("POST /ai/result/filter/ HTTP/1.1\r\nHost: x\r\n");
    QTest::newRow("begin a body") << headOf("Content-Length: 1000\r\n") + "{";
    QTest::newRow("keep the connection") << getBytes("/healthz");
}

void ServiceBadClientsTest::keepNobodyWaiting()
{
    QFETCH(QByteArray, request);
    ServiceProcess service;
    QVERIFY(service.start(patience()));
    const Clients idle = connectMany(service, request);
    QCOMPARE(statusOf(ServiceClient(service).get("/healthz")), 200);
}

void ServiceBadClientsTest::giveWayWhereFilesAreFew()
{
    constexpr int files = 256;
    ServiceProcess service;
    service.limitFiles(files);
    QVERIFY(service.start(patience()));
    const Clients silent = connectMany(service, QByteArray(), 2 * files);
    QCOMPARE(statusOf(ServiceClient(service).get("/healthz")), 200);
}

void ServiceBadClientsTest::areRefusedBeforeTheBody_data()
{
    QTest::addColumn<QByteArray>("headers");
    QTest::addColumn<int>("code");
    QTest::newRow("too large") << QByteArray("Content-Length: 1073741824\r\n") << 413;
    QTest::newRow("too large, asks first")
        << QByteArray("Content-Length: 1073741824\r\nExpect: 100-continue\r\n") << 413;
    QTest::newRow("no length") << QByteArray() << 400;
    QTest::newRow("two lengths") << QByteArray("Content-Length: 10\r\nContent-Length: 20\r\n") << 400;
    QTest::newRow("one length twice") << QByteArray("Content-Length: 10\r\nContent-Length: 10\r\n") << 400;
    QTest::newRow("length and chunks") << QByteArray("Content-Length: 10\r\nTransfer-Encoding: chunked\r\n") << 400;
    QTest::newRow("unknown encoding") << QByteArray("Transfer-Encoding: gzip, chunked\r\n") << 400;
    QTest::newRow("blank in the name") << QByteArray("Content-Length: 10\r\nContent-Length : 20\r\n") << 400;
}

void ServiceBadClientsTest::areRefusedBeforeTheBody()
{
    QFETCH(QByteArray, headers);
    ServiceProcess service;
    QVERIFY(service.start(patience()));
    RawClient raw(service.port());
    raw.send(headOf(headers));
    const QByteArray reply = raw.readReply();
    QCOMPARE(statusOf(reply), 200);
    QTEST(codeOf(jsonOf(reply)), "code");
    QVERIFY(raw.waitForClose());
}

void ServiceBadClientsTest::withALengthThatIsNoneAreRefused_data()
{
    QTest::addColumn<QByteArray>("length");
    QTest::addColumn<int>("status");
    QTest::newRow("too large for any number") << QByteArray("99999999999999999999999") << 413;
    QTest::newRow("negative") << QByteArray("-1") << 400;
    QTest::newRow("not decimal") << QByteArray("0x10") << 400;
}

void ServiceBadClientsTest::withALengthThatIsNoneAreRefused()
{
    QFETCH(QByteArray, length);
    ServiceProcess service;
    QVERIFY(service.start(patience()));
    RawClient raw(service.port());
    raw.send(headOf("Content-Length: " + length + "\r\n"));
    QTEST(statusOf(raw.readReply()), "status");
    QVERIFY(raw.waitForClose());
}

void ServiceBadClientsTest::sendNoMoreThanTheLimitsAllow_data()
{
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<QByteArray>("piece");
    const QByteArray letters(65536, 'a');
    const QByteArray headers = QByteArray("X-Filler: abcdefghijklmnopqrstuvwxyz\r\n").repeated(1000);
    const QByteArray chunks = headOf("Transfer-Encoding: chunked\r\n");
    QTest::newRow("request line") << QByteArray("GET /") << letters;
    QTest::newRow("header line") << QByteArray("GET / HTTP/1.1\r\nX: ") << letters;
    QTest::newRow("headers") << QByteArray("GET / HTTP/1.1\r\n") << headers;
    QTest::newRow("chunk size") << chunks << QByteArray(65536, '0');
    QTest::newRow("chunk extension") << chunks + "5;" << letters;
    QTest::newRow("trailer line") << chunks + "5\r\nhello\r\n0\r\nX:" << letters;
    QTest::newRow("trailers") << chunks + "5\r\nhello\r\n0\r\n" << headers;
}

// What the sockets of both sides hold in between comes on top of what the service takes.
void ServiceBadClientsTest::sendNoMoreThanTheLimitsAllow()
{
    constexpr qint64 endless = 96 * 1024 * 1024;
    constexpr qint64 socketBuffers = 16 * 1024 * 1024;
    QFETCH(QByteArray, begin);
    QFETCH(QByteArray, piece);
    ServiceProcess service;
    QVERIFY(service.start(patience()));
    RawClient raw(service.port());
    raw.send(begin);
    qint64 sent = 0;
    while (sent < endless && raw.isOpen()) {
        raw.send(piece);
        sent += piece.size();
    }
    QVERIFY2(sent < socketBuffers, qPrintable(QString::number(sent)));
    QCOMPARE(statusOf(ServiceClient(service).get("/healthz")), 200);
}

// Each chunk holds one byte, so that the body stays small while what carries it grows.
void ServiceBadClientsTest::sendNoMoreThanTheLimitsAllowInSmallChunks()
{
    ServiceProcess service;
    QVERIFY(service.start(patience() + QStringList{QStringLiteral("--max-body"), QStringLiteral("1")}));
    RawClient raw(service.port());
    raw.send(headOf("Transfer-Encoding: chunked\r\n"));
    const QByteArray piece = QByteArray("1;a=b\r\n \r\n").repeated(65536);
    for (int i = 0; i < 17; ++i) {
        raw.send(piece);
    }
    raw.send("0\r\n\r\n");
    QCOMPARE(codeOf(jsonOf(raw.readReply())), 413);
}

void ServiceBadClientsTest::withoutATokenAreRefusedBeforeTheBody()
{
    ServiceProcess service;
    QVERIFY(service.start(patience() + QStringList{QStringLiteral("--token"), QStringLiteral("secret-word")}));
    RawClient raw(service.port());
    raw.send(headOf("Content-Length: 1000\r\n"));
    QCOMPARE(codeOf(jsonOf(raw.readReply())), 401);
}

void ServiceBadClientsTest::areToldToGoOnWithABodyThatFits()
{
    ServiceProcess service;
    QVERIFY(service.start());
    const QByteArray body = question("stop layer 1");
    RawClient raw(service.port());
    raw.send(headOf("Expect: 100-continue\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n"));
    QCOMPARE(statusOf(raw.readReply()), 100);
    raw.send(body);
    QCOMPARE(codeOf(jsonOf(raw.readReply())), 0);
}

void ServiceBadClientsTest::doNotKeepTheServiceFromStopping_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("say nothing") << QByteArray();
    QTest::newRow("begin a head") << QByteArray("POST /ai/res");
    QTest::newRow("begin a body") << headOf("Content-Length: 100\r\n") + "{";
    QTest::newRow("refused, still sending") << headOf("Content-Length: 1073741824\r\n") + "{";
}

void ServiceBadClientsTest::doNotKeepTheServiceFromStopping()
{
    QFETCH(QByteArray, request);
    ServiceProcess service;
    QVERIFY(service.start(patience()));
    const Clients waiting = connectMany(service, request);
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
}

void ServiceBadClientsTest::areAnsweredInOrderWhenTheyDoNotWait()
{
    ServiceProcess service;
    QVERIFY(service.start());
    RawClient raw(service.port());
    raw.send(getBytes("/healthz") + getBytes("/nothing") + postBytes(paths::text, question("stop layer 1")));
    QByteArray replies;
    while (!replies.contains("reqId")) {
        const QByteArray more = raw.readReply();
        QVERIFY(!more.isEmpty());
        replies += more;
    }
    QCOMPARE(replies.count("HTTP/1.1 "), 3);
    QVERIFY(replies.indexOf("HTTP/1.1 404") > replies.indexOf("\"status\":\"ok\""));
    QVERIFY(replies.indexOf("reqId") > replies.indexOf("HTTP/1.1 404"));
}

void ServiceBadClientsTest::withoutAHostHeaderGetTheServicesOwnAddress()
{
    ServiceProcess service;
    QVERIFY(service.start());
    ServiceClient client(service);
    const QString id = requestIdOf(client.post(paths::picture, pictureWish("sea")));
    QCOMPARE(codeOf(client.result(true, id)), 0);
    RawClient raw(service.port());
    raw.send(postBytes(paths::poll, poll(true, id)).replace("Host: 127.0.0.1\r\n", ""));
    const QString address = firstAnswerOf(jsonOf(raw.readReply()));
    QVERIFY2(address.startsWith(service.url(QStringLiteral("/pictures/")).toString()), qPrintable(address));
}

QTEST_GUILESS_MAIN(ServiceBadClientsTest)
#include "tst_servicebadclients.moc"
