#include "cachefolder.h"
#include "controllertest.h"
#include "processusage.h"

#include <QNetworkRequest>

#include <memory>

Q_DECLARE_METATYPE(tavro::testsupport::ScriptedAnswer)

/// Replies of a server that sends more than anybody wants.
class ReplyLimitsTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void endlessReplyIsBrokenOff_data();
    void endlessReplyIsBrokenOff();
    void announcedLengthIsEnough_data();
    void announcedLengthIsEnough();
    void largestReplyIsRead();
    void packedReplyIsNotUnpacked_data();
    void packedReplyIsNotUnpacked();
    void bodyOfAnErrorCountsToo();
    void manyHeadersAreRefused_data();
    void manyHeadersAreRefused();
    void cookiesDoNotAddUp();
    void headersDoNotHoldTheCaller();
    void parsingDoesNotHoldTheCaller();
    void picturesHaveALimitOfTheirOwn();
    void stalledPictureIsGivenUp();
    void isReadLikeAnyReply();

private:
    bool postAndPoll(bool isPoll, const ScriptedAnswer &answer);
};

namespace {

constexpr qint64 mebibyte = 1024 * 1024;
// What the systems of both ends may hold of a connection.
constexpr qint64 onItsWay = 16 * mebibyte;

QByteArray deflated(qint64 bytes)
{
    constexpr int sizeOfQtsHeader = 4;
    return qCompress(QByteArray(static_cast<int>(bytes), ' ')).mid(sizeOfQtsHeader);
}

void addRequests()
{
    QTest::addColumn<bool>("isPoll");
    QTest::newRow("generation reply") << false;
    QTest::newRow("poll reply") << true;
}

} // namespace

// Waits for the end of the request whose answer is given.
bool ReplyLimitsTest::postAndPoll(bool isPoll, const ScriptedAnswer &answer)
{
    if (!isPoll)
        return f->askText(QStringLiteral("question"), answer);
    return f->askText() && f->poll(answer);
}

void ReplyLimitsTest::endlessReplyIsBrokenOff_data()
{
    addRequests();
}

void ReplyLimitsTest::endlessReplyIsBrokenOff()
{
    QFETCH(bool, isPoll);
    const ExpectedLog refusal(f->log, QRegularExpression(QStringLiteral("^refused: .*larger than 16 MiB")));
    QVERIFY(postAndPoll(isPoll, ScriptedAnswer::endless()));
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:1"));
    QVERIFY(f->log.contains(isPoll ? QStringLiteral("Request Error: \"the reply is larger")
                                   : QStringLiteral("Error: \"the reply is larger")));
    QVERIFY(eventually([&] { return f->server.connectionsOpen() == 0; }));
    QVERIFY2(f->server.bytesTaken() < 16 * mebibyte + onItsWay, qPrintable(QString::number(f->server.bytesTaken())));
}

void ReplyLimitsTest::announcedLengthIsEnough_data()
{
    addRequests();
}

void ReplyLimitsTest::announcedLengthIsEnough()
{
    QFETCH(bool, isPoll);
    const ExpectedLog refusal(f->log, QStringLiteral("larger than 16 MiB"));
    QVERIFY(postAndPoll(isPoll, ScriptedAnswer::large({}, ' ', 16 * mebibyte + 1, {}).heldAfter(1000)));
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:1"));
    QVERIFY(eventually([&] { return f->server.connectionsOpen() == 0; }));
}

void ReplyLimitsTest::largestReplyIsRead()
{
    const QByteArray begin = R"({"code":0,"data":{"answers":[")";
    const QByteArray end = R"("]}})";
    const qint64 length = 16 * mebibyte - begin.size() - end.size();
    QVERIFY(postAndPoll(true, ScriptedAnswer::large(begin, 'x', length, end)));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
    QCOMPARE(f->signalled.generateTextFinished.argument<0>(0).answer.size(), static_cast<std::size_t>(length));
}

void ReplyLimitsTest::packedReplyIsNotUnpacked_data()
{
    QTest::addColumn<QByteArray>("encoding");
    for (const char *encoding : {"deflate", "gzip", "Deflate", "br"})
        QTest::newRow(encoding) << QByteArray(encoding);
}

// 64 MiB in 64 kB: what a client unpacks by itself, it may hold before it can count.
void ReplyLimitsTest::packedReplyIsNotUnpacked()
{
    QFETCH(QByteArray, encoding);
    const QByteArray body = deflated(64 * mebibyte);
    QVERIFY(processusage::forgetPeak());
    const qint64 before = processusage::peakBytes();
    const ExpectedLog refusal(f->log, QRegularExpression(QStringLiteral("^refused: .*packed as ")));
    QVERIFY(postAndPoll(true, ScriptedAnswer::bytes(body).withHeader("Content-Encoding", encoding)));
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:1"));
    QVERIFY(processusage::peakBytes() - before < 32 * mebibyte);
    const QVector<HttpRequest> requests = f->server.requests();
    for (const HttpRequest &request : requests)
        QCOMPARE(request.header("Accept-Encoding").value_or(QByteArray()), QByteArray("identity"));
}

void ReplyLimitsTest::bodyOfAnErrorCountsToo()
{
    const ExpectedLog refusal(f->log, QStringLiteral("larger than 16 MiB"));
    QVERIFY(postAndPoll(true, ScriptedAnswer::endless().withStatus(500)));
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:1"));
    QVERIFY(eventually([&] { return f->server.connectionsOpen() == 0; }));
}

void ReplyLimitsTest::manyHeadersAreRefused_data()
{
    QTest::addColumn<ScriptedAnswer>("answer");
    QTest::addColumn<bool>("isRead");
    const ScriptedAnswer accepted = ControllerFixture::accepted();
    QTest::newRow("a few") << accepted.withHeaders(150) << true;
    QTest::newRow("201") << accepted.withHeaders(201) << false;
    QTest::newRow("one of 60 kB") << accepted.withHeader("X-Long", QByteArray(60'000, 'x')) << true;
    QTest::newRow("one of 66 kB") << accepted.withHeader("X-Long", QByteArray(66'000, 'x')) << false;
}

void ReplyLimitsTest::manyHeadersAreRefused()
{
    QFETCH(ScriptedAnswer, answer);
    QFETCH(bool, isRead);
    const ExpectedLog refusal(f->log, QStringLiteral("too many headers"), isRead ? 0 : 1);
    QVERIFY(postAndPoll(false, answer));
    QCOMPARE(f->signalled.summary(), isRead ? QString() : QStringLiteral("requestFailed:1"));
    QCOMPARE(f->d.strReqId, isRead ? QStringLiteral("r1") : QString());
}

void ReplyLimitsTest::cookiesDoNotAddUp()
{
    QVERIFY(f->askText());
    for (int round = 0; round < 4; ++round) {
        ScriptedAnswer answer = ControllerFixture::working();
        for (int number = 0; number < 40; ++number)
            answer = answer.withHeader("Set-Cookie", QByteArray::number(100 * round + number) + "=v");
        QVERIFY(f->poll(answer));
    }
    QVERIFY(f->poll(ControllerFixture::readyText()));
    const QByteArray sent = f->server.requests().last().header("Cookie").value_or(QByteArray());
    QCOMPARE(sent.split(';').size(), 50);
}

// Qt's own time for headers grows with the square of their number: it must not be this thread's.
void ReplyLimitsTest::headersDoNotHoldTheCaller()
{
    const ScriptedAnswer answer = ControllerFixture::accepted().withHeaders(20'000);
    const ExpectedLog refusal(f->log, QStringLiteral("too many headers"));
    const double thread = processusage::threadSeconds();
    const double process = processusage::processSeconds();
    QVERIFY(postAndPoll(false, answer));
    const double ownShare = (processusage::threadSeconds() - thread) / (processusage::processSeconds() - process);
    QVERIFY2(ownShare < 0.25, qPrintable(QString::number(ownShare)));
}

void ReplyLimitsTest::parsingDoesNotHoldTheCaller()
{
    const ScriptedAnswer answer = ScriptedAnswer::large(R"({"code":1,"x":")", 'x', 15 * mebibyte, "\"}");
    QVERIFY(f->askText());
    const double thread = processusage::threadSeconds();
    const double process = processusage::processSeconds();
    QVERIFY(f->poll(answer));
    const double ownShare = (processusage::threadSeconds() - thread) / (processusage::processSeconds() - process);
    QVERIFY2(ownShare < 0.25, qPrintable(QString::number(ownShare)));
    QCOMPARE(f->log.count(QStringLiteral("Thinking...")), 1);
}

void ReplyLimitsTest::picturesHaveALimitOfTheirOwn()
{
    const CacheFolder cache;
    f->server.expect("GET", "/p", ScriptedAnswer::large({}, 'x', 17 * mebibyte, {}));
    f->controller.downloadPicture(f->server.url() + QStringLiteral("/p"));
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("downloadPictureFinished:1"));

    const ExpectedLog refusal(f->log, QRegularExpression(QStringLiteral("^refused: .*larger than 256 MiB")));
    const ExpectedLog failure(f->log, QStringLiteral("slotDownloadImageFinished_ errorcode 299 url "));
    f->server.expect("GET", "/q", ScriptedAnswer::large({}, 'x', 257 * mebibyte, {}));
    f->controller.downloadPicture(f->server.url() + QStringLiteral("/q"));
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("downloadPictureFinished:1"));
    QCOMPARE(cache.names().size(), 1);
    QVERIFY(f->server.bytesTaken() < 17 * mebibyte + onItsWay);
}

// The time itself is Qt's.
void ReplyLimitsTest::stalledPictureIsGivenUp()
{
    const CacheFolder cache;
    f->server.expect("GET", "/p", ScriptedAnswer::bytes("picture").held());
    f->controller.downloadPicture(f->server.url() + QStringLiteral("/p"));
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    const auto *reply = f->d.downloadManager->findChild<QNetworkReply *>();
    QCOMPARE(reply->request().transferTimeout(), 30'000);
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
}

void ReplyLimitsTest::isReadLikeAnyReply()
{
    f->server.expect("GET", "/p", ScriptedAnswer::bytes("0123456789"));
    const std::unique_ptr<QNetworkReply> reply(
        f->d.downloadManager->get(QNetworkRequest(QUrl(f->server.url() + QStringLiteral("/p")))));
    QVERIFY(eventually([&] { return reply->isFinished(); }));
    QCOMPARE(reply->bytesAvailable(), 10);
    QCOMPARE(reply->read(4), QByteArray("0123"));
    QCOMPARE(reply->readAll(), QByteArray("456789"));
    QVERIFY(reply->atEnd());
}

QTEST_GUILESS_MAIN(ReplyLimitsTest)

#include "tst_replylimits.moc"
