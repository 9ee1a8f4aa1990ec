#include "floodserver.h"
#include "openai/transfer.h"
#include "openai/upstreamclient.h"
#include "openai/upstreamerror.h"

#include <QTest>

#include <future>

using namespace tavro::assistantservice;
using Outcome = UpstreamReply::Outcome;
using upstream::FloodServer;

Q_DECLARE_METATYPE(Outcome)

namespace {

const QByteArray head = QByteArrayLiteral("HTTP/1.1 200 OK\r\n");
const QByteArray chunkedHead = head + "Transfer-Encoding: chunked\r\n\r\n";

QByteArray repeated(const QByteArray &piece)
{
    return piece.repeated(qMax(1, 16384 / piece.size()));
}

UpstreamReply fetch(const FloodServer &server, std::chrono::milliseconds limit = std::chrono::minutes(1))
{
    const std::atomic<bool> cancelled{false};
    UpstreamAddress address;
    address.host = QStringLiteral("127.0.0.1");
    address.port = server.port();
    return UpstreamClient(address, "secret-key")
        .get(QStringLiteral("/v1/models"), qint64(1024) * 1024, Patience(limit, cancelled));
}

} // namespace

/// What a server can send beside a body, and how much of it is taken.
class TransferTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void endlessAnswerIsGivenUp_data();
    void endlessAnswerIsGivenUp();
    void answerIsRead_data();
    void answerIsRead();
    void answerIsNone_data();
    void answerIsNone();
    void everyOutcomeHasItsWords();
    void addressIsAskedForBeforeItIsConnectedTo();
};

void TransferTest::endlessAnswerIsGivenUp_data()
{
    QTest::addColumn<QByteArray>("beginning");
    QTest::addColumn<QByteArray>("piece");
    QTest::addColumn<Outcome>("outcome");
    QTest::newRow("status line") << QByteArray("HTTP/1.1 200 ") << QByteArray("x") << Outcome::HeadTooLarge;
    QTest::newRow("no status line") << QByteArray() << QByteArray("x") << Outcome::NoHttp;
    QTest::newRow("header line") << head + "X: " << QByteArray("x") << Outcome::HeadTooLarge;
    QTest::newRow("header name") << head << QByteArray("x") << Outcome::HeadTooLarge;
    QTest::newRow("headers") << head << QByteArray("X-Y: zzzz\r\n") << Outcome::HeadTooLarge;
    QTest::newRow("folded header") << head + "X: a\r\n" << QByteArray(" zzzz\r\n") << Outcome::HeadTooLarge;
    QTest::newRow("interim answers") << QByteArray() << QByteArray("HTTP/1.1 103 Early\r\nLink: a\r\n\r\n")
                                     << Outcome::HeadTooLarge;
    QTest::newRow("chunk length") << chunkedHead << QByteArray("0") << Outcome::NoHttp;
    QTest::newRow("chunk extension") << chunkedHead + "1;x=" << QByteArray("x") << Outcome::HeadTooLarge;
    QTest::newRow("chunk extensions") << chunkedHead << "1;" + QByteArray(1000, 'x') + "\r\na\r\n"
                                      << Outcome::HeadTooLarge;
    QTest::newRow("trailer line") << chunkedHead + "1\r\na\r\n0\r\nX: " << QByteArray("x") << Outcome::NoHttp;
    QTest::newRow("trailers") << chunkedHead + "1\r\na\r\n0\r\n"
                              << QByteArray("X-Y: zzzz\r\n") << Outcome::HeadTooLarge;
    QTest::newRow("body") << head + "\r\n" << QByteArray("x") << Outcome::TooLarge;
    QTest::newRow("chunks") << chunkedHead << QByteArray("1\r\na\r\n") << Outcome::TooLarge;
    QTest::newRow("announced body") << head + "Content-Length: 999999999\r\n\r\n"
                                    << QByteArray("x") << Outcome::TooLarge;
    QTest::newRow("redirect's body") << QByteArray("HTTP/1.1 302 Found\r\nLocation: /a\r\n\r\n") << QByteArray("x")
                                     << Outcome::TooLarge;
}

void TransferTest::endlessAnswerIsGivenUp()
{
    QFETCH(QByteArray, beginning);
    QFETCH(QByteArray, piece);
    FloodServer server(beginning, repeated(piece));
    QFETCH(Outcome, outcome);
    QCOMPARE(outcomeName(fetch(server).outcome), outcomeName(outcome));
    // A part of that the service never saw: the system had taken it in already.
    const qint64 sent = server.sentBytes();
    QVERIFY2(sent < FloodServer::mostBytes / 4, qPrintable(QString::number(sent)));
}

void TransferTest::answerIsRead_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("with a length") << head + "Content-Length: 2\r\n\r\nok" << 200 << QByteArray("ok");
    QTest::newRow("until the end") << head + "\r\nok" << 200 << QByteArray("ok");
    QTest::newRow("chunks with extension and trailer")
        << chunkedHead + "1;a=\"b\"\r\no\r\n1 ;c\r\nk\r\n0;d\r\nX-Sum: 1\r\n\r\n"
        << 200 << QByteArray("ok");
    QTest::newRow("early hints") << "HTTP/1.1 103 Early Hints\r\nLink: <a>\r\n\r\n" + head
            + "Content-Length: 2\r\n\r\nok"
                                 << 200 << QByteArray("ok");
    QTest::newRow("processing") << "HTTP/1.1 102 Processing\r\n\r\nHTTP/1.1 102 Processing\r\n\r\n" + head
            + "Content-Length: 2\r\n\r\nok"
                                << 200 << QByteArray("ok");
    QTest::newRow("an error") << QByteArray("HTTP/1.0 500 No\r\n\r\nsorry") << 500 << QByteArray("sorry");
}

void TransferTest::answerIsRead()
{
    QFETCH(QByteArray, answer);
    const FloodServer server(answer, {});
    const UpstreamReply reply = fetch(server);
    QCOMPARE(reply.outcome, Outcome::Answered);
    QCOMPARE(reply.peer, AddressClass::Loopback);
    QTEST(reply.status, "status");
    QTEST(reply.body, "body");
}

void TransferTest::answerIsNone_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<Outcome>("outcome");
    QTest::newRow("nothing") << QByteArray() << Outcome::Silent;
    QTest::newRow("cut off") << head + "Content-Length: 3\r\n\r\nok" << Outcome::Broken;
    QTest::newRow("cut off in chunks") << chunkedHead + "5\r\nok" << Outcome::Broken;
    QTest::newRow("early hints alone") << QByteArray("HTTP/1.1 103 Early Hints\r\n\r\n") << Outcome::Broken;
    QTest::newRow("half a head") << head + "X: " << Outcome::Broken;
    QTest::newRow("a greeting") << QByteArray("220 mail ready\r\n") << Outcome::NoHttp;
    QTest::newRow("no chunk length") << chunkedHead + "hello\r\n" << Outcome::NoHttp;
    QTest::newRow("TLS alert") << QByteArray::fromHex("15030300020246") << Outcome::WantsTls;
}

void TransferTest::answerIsNone()
{
    QFETCH(QByteArray, answer);
    const FloodServer server(answer, {});
    QFETCH(Outcome, outcome);
    QCOMPARE(outcomeName(fetch(server).outcome), outcomeName(outcome));
}

void TransferTest::everyOutcomeHasItsWords()
{
    QSet<QString> texts;
    QSet<QByteArray> names;
    const int last = static_cast<int>(Outcome::Cancelled);
    for (int i = 1; i <= last; ++i) {
        const auto outcome = static_cast<Outcome>(i);
        const ServiceError error = unansweredError(outcome, QStringLiteral("model's server X"));
        QVERIFY(error);
        QVERIFY2(!error.message.contains(QLatin1Char('%')), qPrintable(error.message));
        texts.insert(error.message);
        names.insert(outcomeName(outcome));
    }
    QCOMPARE(texts.size(), last);
    QCOMPARE(names.size(), last);
}

// By name, so that a name which leads somewhere else the second time is of no use.
void TransferTest::addressIsAskedForBeforeItIsConnectedTo()
{
    FloodServer server(head + "Content-Length: 2\r\n\r\nok", {});
    const std::atomic<bool> cancelled{false};
    TransferRequest request;
    request.url = "http://localhost:" + QByteArray::number(server.port()) + "/";
    request.largestBody = 100;
    request.mayConnect = [](AddressClass kind) { return kind == AddressClass::Public; };
    QCOMPARE(transfer(request, Patience(std::chrono::minutes(1), cancelled)).outcome, Outcome::NotAllowed);
    QCOMPARE(server.sentBytes(), qint64(0));
}

QTEST_GUILESS_MAIN(TransferTest)
#include "tst_transfer.moc"
