#include "http/bodybudget.h"
#include "localservice.h"
#include "serviceclient.h"

#include <QtTest>

using namespace tavro::assistantservice;

namespace {

bool take(RequestBody &body, int size)
{
    return body.take(QByteArray(size, 'x').constData(), static_cast<size_t>(size));
}

} // namespace

// What clients can make the service keep in memory.
class ServiceMemoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLargestBodyMakesRoom();
    void aBodyThatIsTooLargeHoldsNothing();
    void aBodyThatWentHoldsNothing();
    void aPictureThatMadeRoomIsNotSentOn();
    void aLargeRequestIsAnsweredBesideOthers();
};

void ServiceMemoryTest::theLargestBodyMakesRoom()
{
    BodyBudget budget(1000, 2000);
    RequestBody first(budget);
    RequestBody second(budget);
    RequestBody third(budget);
    QVERIFY(take(first, 900) && take(second, 1000) && take(third, 100));
    QCOMPARE(budget.used(), 2000);
    QVERIFY(take(third, 1));
    QCOMPARE(second.error().code, ErrorCode::Busy);
    QVERIFY(second.bytes().isEmpty());
    QVERIFY(!first.error() && !third.error());
    QCOMPARE(third.bytes().size(), 101);
    QCOMPARE(budget.used(), qint64(1001));
}

void ServiceMemoryTest::aBodyThatIsTooLargeHoldsNothing()
{
    BodyBudget budget(1000, 2000);
    RequestBody body(budget);
    QVERIFY(take(body, 1000));
    QVERIFY(!body.error());
    QVERIFY(take(body, 1));
    QCOMPARE(body.error().code, ErrorCode::TooLarge);
    QCOMPARE(budget.used(), 0);
    QVERIFY(body.bytes().isEmpty());
    constexpr int more = 65 * 1024 * 1024;
    QVERIFY(!take(body, more));
}

void ServiceMemoryTest::aBodyThatWentHoldsNothing()
{
    BodyBudget budget(1000, 2000);
    {
        RequestBody body(budget);
        QVERIFY(take(body, 700));
        QCOMPARE(budget.used(), 700);
    }
    QCOMPARE(budget.used(), 0);
}

// Else clients that read slowly would keep as many pictures in memory as they like.
void ServiceMemoryTest::aPictureThatMadeRoomIsNotSentOn()
{
    constexpr int large = 48 * 1024 * 1024;
    AssistantSettings settings;
    settings.storeLimits.pictureBytes = large + 1000;
    LocalService service(settings);
    const QByteArray path = service.makePicture(large);
    RawClient slow(service.port());
    slow.send(getBytes(path));
    QVERIFY(slow.waitForBytes());
    QVERIFY(!service.makePicture(2000).isEmpty());
    const QByteArray reply = slow.readAll();
    QCOMPARE(statusOf(reply), 200);
    QVERIFY(bodyOf(reply).size() < large);
}

void ServiceMemoryTest::aLargeRequestIsAnsweredBesideOthers()
{
    LocalService service;
    ServiceClient client(service.port());
    QByteArray media = "[";
    for (int i = 0; i < 20000; ++i) {
        media += (i == 0 ? "" : ",") + QByteArray("{\"id\":\"") + QByteArray::number(i) + "\",\"name\":\"Harbour\"}";
    }
    const QByteArray body = question("hello").replace("\"mediaList\":[", "\"mediaList\":" + media + "],\"x\":[");
    QVERIFY(body.size() > 512 * 1024);
    const QJsonObject reply = client.result(false, requestIdOf(client.post(paths::text, body)));
    QCOMPARE(firstAnswerOf(reply), QStringLiteral("5"));
}

QTEST_GUILESS_MAIN(ServiceMemoryTest)
#include "tst_servicememory.moc"
