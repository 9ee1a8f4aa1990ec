#include "requeststore.h"
#include "workerpool.h"

#include <QtTest>

#include <ctime>
#include <future>

using namespace tavro::assistantservice;
using namespace std::chrono_literals;

namespace {

// A store whose time stands still until the test moves it.
struct Fixture {
    explicit Fixture(const StoreLimits &limits = {})
        : store(limits, [this] { return now; })
    { }

    QString add(bool picture = false, qint64 bytes = 100)
    {
        QString id;
        error = store.add(picture, bytes, id);
        return id;
    }

    QString addPicture(int bytes)
    {
        const QString id = add(true);
        PictureResult result;
        result.bytes = QByteArray(bytes, 'x');
        result.mediaType = QByteArrayLiteral("image/png");
        store.finishPicture(id, result);
        return id;
    }

    void finish(const QString &id) { store.finishText(id, {{}, QStringLiteral("answer"), {}}); }

    ErrorCode pollCode(const QString &id, bool picture = false) { return store.poll(id, picture).error.code; }

    RequestStore::TimePoint now{1000s};
    ServiceError error;
    RequestStore store;
};

StoreLimits limitsWith(int unfinished, std::chrono::milliseconds work = 0ms)
{
    StoreLimits limits;
    limits.unfinished = unfinished;
    limits.work = work;
    limits.keep = 60s;
    return limits;
}

// What so many requests cost, all of them unfinished at first and half of them forgotten at once, in nanoseconds of
// this thread alone.
qint64 processorTimeOf(int requests)
{
    StoreLimits limits = limitsWith(requests);
    limits.finished = requests / 2;
    RequestStore store(limits, [] { return RequestStore::TimePoint{1000s}; });
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return time.tv_sec * qint64(1000000000) + time.tv_nsec;
    };
    const qint64 start = now();
    QVector<QString> ids(requests);
    for (QString &id : ids) {
        store.add(false, 0, id);
    }
    for (const QString &id : qAsConst(ids)) {
        store.finishText(id, {});
    }
    return now() - start;
}

} // namespace

class ServiceStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aRequestGoesFromWorkingToReady();
    void aReadyResultIsKeptForItsTimeAndNoLonger();
    void workTakesAtLeastItsTime();
    void refusesWhatTheQueueDoesNotHold();
    void tellsTheKindsApart();
    void doesNotKnowOtherIds();
    void everyPictureHasItsOwnId();
    void theOldestPictureMakesRoom();
    void aPictureBeyondTheMemoryIsAnError();
    void expiredPicturesGiveTheirMemoryBack();
    void forgetsTheOldestFinishedRequestBeyondTheCount();
    void refusesBodiesThatTheMemoryDoesNotHold();
    void theOldestAnswerMakesRoom();
    void anAnswerBeyondTheMemoryIsAnError();
    void heldResultsCountAsUnfinished();
    void manyRequestsCostNoMoreEachThanFew();
    void aDroppedRequestIsForgotten();
    void aFailedRequestTellsItsError();
    void thePoolRunsTasksAndStops();
    void thePoolSurvivesATaskThatThrows();
    void thePoolKeepsNothingOfATask();
};

void ServiceStoreTest::aRequestGoesFromWorkingToReady()
{
    Fixture fixture;
    const QString id = fixture.add();
    QVERIFY(!id.isEmpty());
    QVERIFY(fixture.store.poll(id, false).working);
    fixture.finish(id);
    QVERIFY(!fixture.store.poll(id, false).working);
    QCOMPARE(fixture.store.poll(id, false).answer, QStringLiteral("answer"));
}

void ServiceStoreTest::aReadyResultIsKeptForItsTimeAndNoLonger()
{
    Fixture fixture(limitsWith(10));
    const QString id = fixture.add();
    fixture.now += 3600s;
    QVERIFY2(fixture.store.poll(id, false).working, "what is being worked on does not expire");
    fixture.finish(id);
    fixture.now += 59s;
    QCOMPARE(fixture.pollCode(id), ErrorCode::None);
    fixture.now += 1s;
    QCOMPARE(fixture.pollCode(id), ErrorCode::NotFound);
}

void ServiceStoreTest::workTakesAtLeastItsTime()
{
    Fixture fixture(limitsWith(10, 500ms));
    const QString id = fixture.add();
    fixture.finish(id);
    fixture.now += 499ms;
    QVERIFY(fixture.store.poll(id, false).working);
    fixture.now += 1ms;
    QVERIFY(!fixture.store.poll(id, false).working);
}

void ServiceStoreTest::refusesWhatTheQueueDoesNotHold()
{
    Fixture fixture(limitsWith(2));
    const QString first = fixture.add();
    fixture.add();
    QVERIFY(fixture.add().isEmpty());
    QCOMPARE(fixture.error.code, ErrorCode::Busy);
    QVERIFY(!fixture.error.message.isEmpty());
    fixture.finish(first);
    QVERIFY(!fixture.add().isEmpty());
}

void ServiceStoreTest::tellsTheKindsApart()
{
    Fixture fixture;
    const QString text = fixture.add();
    const QString picture = fixture.addPicture(10);
    QCOMPARE(fixture.pollCode(text, true), ErrorCode::WrongKind);
    QCOMPARE(fixture.pollCode(picture, false), ErrorCode::WrongKind);
    QCOMPARE(fixture.pollCode(picture, true), ErrorCode::None);
}

void ServiceStoreTest::doesNotKnowOtherIds()
{
    Fixture fixture;
    fixture.add();
    QCOMPARE(fixture.pollCode(QStringLiteral("nonsense")), ErrorCode::NotFound);
    QCOMPARE(fixture.pollCode(QString()), ErrorCode::NotFound);
    QVERIFY(!fixture.store.picture(QString()));
    fixture.finish(QStringLiteral("nonsense"));
}

void ServiceStoreTest::everyPictureHasItsOwnId()
{
    Fixture fixture;
    const PollResult first = fixture.store.poll(fixture.addPicture(10), true);
    const PollResult second = fixture.store.poll(fixture.addPicture(10), true);
    QVERIFY(!first.pictureId.isEmpty());
    QVERIFY(first.pictureId != second.pictureId);
    QCOMPARE(fixture.store.picture(first.pictureId)->bytes.size(), 10);
    QCOMPARE(fixture.store.picture(first.pictureId)->mediaType, QByteArray("image/png"));
}

void ServiceStoreTest::theOldestPictureMakesRoom()
{
    StoreLimits limits = limitsWith(10);
    limits.pictureBytes = 100;
    Fixture fixture(limits);
    const QString first = fixture.addPicture(60);
    const QString firstPicture = fixture.store.poll(first, true).pictureId;
    const QString second = fixture.addPicture(40);
    QCOMPARE(fixture.store.pictureBytes(), qint64(100));
    const QString third = fixture.addPicture(30);
    QCOMPARE(fixture.store.pictureBytes(), qint64(70));
    QCOMPARE(fixture.pollCode(first, true), ErrorCode::Expired);
    QVERIFY(!fixture.store.picture(firstPicture));
    QCOMPARE(fixture.pollCode(second, true), ErrorCode::None);
    QCOMPARE(fixture.pollCode(third, true), ErrorCode::None);
}

void ServiceStoreTest::aPictureBeyondTheMemoryIsAnError()
{
    StoreLimits limits = limitsWith(10);
    limits.pictureBytes = 100;
    Fixture fixture(limits);
    const QString kept = fixture.addPicture(50);
    QCOMPARE(fixture.pollCode(fixture.addPicture(101), true), ErrorCode::TooLarge);
    QCOMPARE(fixture.pollCode(kept, true), ErrorCode::None);
    QCOMPARE(fixture.store.pictureBytes(), qint64(50));
}

void ServiceStoreTest::expiredPicturesGiveTheirMemoryBack()
{
    Fixture fixture(limitsWith(10));
    const QString picture = fixture.store.poll(fixture.addPicture(50), true).pictureId;
    fixture.now += 61s;
    QVERIFY(!fixture.store.picture(picture));
    QCOMPARE(fixture.store.pictureBytes(), qint64(0));
}

void ServiceStoreTest::forgetsTheOldestFinishedRequestBeyondTheCount()
{
    StoreLimits limits = limitsWith(10);
    limits.finished = 2;
    Fixture fixture(limits);
    QStringList ids;
    for (int i = 0; i < 3; ++i) {
        ids.append(fixture.add());
        fixture.finish(ids.last());
        QCOMPARE(fixture.store.unfinished(), 0);
    }
    fixture.finish(fixture.add());
    QCOMPARE(fixture.pollCode(ids[0]), ErrorCode::NotFound);
    QCOMPARE(fixture.pollCode(ids[2]), ErrorCode::None);
}

void ServiceStoreTest::refusesBodiesThatTheMemoryDoesNotHold()
{
    StoreLimits limits = limitsWith(10);
    limits.unfinishedBytes = 1000;
    Fixture fixture(limits);
    const QString large = fixture.add(false, 5000);
    QVERIFY2(!large.isEmpty(), "a body that is alone is worked on, whatever its size");
    QVERIFY(fixture.add(true, 1).isEmpty());
    QCOMPARE(fixture.error.code, ErrorCode::Busy);
    fixture.finish(large);
    const QString half = fixture.add(false, 500);
    QVERIFY(!fixture.add(false, 500).isEmpty());
    QVERIFY(fixture.add(false, 1).isEmpty());
    fixture.finish(half);
    QVERIFY(!fixture.add(false, 500).isEmpty());
}

void ServiceStoreTest::theOldestAnswerMakesRoom()
{
    StoreLimits limits = limitsWith(10);
    limits.answersBytes = 10000;
    Fixture fixture(limits);
    QStringList ids;
    for (int i = 0; i < 4; ++i) {
        ids.append(fixture.add());
        fixture.store.finishText(ids.last(), {{}, QString(1500, QLatin1Char('x')), {}});
    }
    QCOMPARE(fixture.pollCode(ids[0]), ErrorCode::NotFound);
    QCOMPARE(fixture.pollCode(ids[1]), ErrorCode::None);
    QCOMPARE(fixture.store.poll(ids[3], false).answer.size(), 1500);
}

void ServiceStoreTest::anAnswerBeyondTheMemoryIsAnError()
{
    StoreLimits limits = limitsWith(10);
    limits.answerBytes = 10000;
    Fixture fixture(limits);
    const QString text = fixture.add();
    fixture.store.finishText(text, {{}, QString(5001, QLatin1Char('x')), {}});
    QCOMPARE(fixture.pollCode(text), ErrorCode::TooLarge);
    const QString commands = fixture.add();
    QJsonArray array;
    for (int i = 0; i < 1000; ++i) {
        array.append(i);
    }
    fixture.store.finishText(commands, {{}, {}, array});
    QCOMPARE(fixture.pollCode(commands), ErrorCode::TooLarge);
    const QString picture = fixture.add(true);
    PictureResult drawn;
    drawn.bytes = QByteArray(10, 'x');
    drawn.description = QString(5001, QLatin1Char('x'));
    fixture.store.finishPicture(picture, drawn);
    QCOMPARE(fixture.pollCode(picture, true), ErrorCode::TooLarge);
    QCOMPARE(fixture.store.pictureBytes(), qint64(0));
}

void ServiceStoreTest::heldResultsCountAsUnfinished()
{
    Fixture fixture(limitsWith(2, 500ms));
    fixture.finish(fixture.add());
    fixture.now += 100ms;
    fixture.finish(fixture.add());
    QCOMPARE(fixture.store.unfinished(), 2);
    QVERIFY(fixture.add().isEmpty());
    fixture.now += 400ms;
    QCOMPARE(fixture.store.unfinished(), 1);
    QVERIFY(!fixture.add().isEmpty());
}

void ServiceStoreTest::manyRequestsCostNoMoreEachThanFew()
{
    constexpr int few = 1000;
    constexpr int many = 20 * few;
    const double times = double(processorTimeOf(many)) / double(processorTimeOf(few));
    QVERIFY2(times < 100, qPrintable(QStringLiteral("20 times as many requests cost %1 times as much").arg(times)));
}

void ServiceStoreTest::aDroppedRequestIsForgotten()
{
    Fixture fixture(limitsWith(1, 500ms));
    const QString id = fixture.add();
    fixture.store.drop(id);
    QCOMPARE(fixture.pollCode(id), ErrorCode::NotFound);
    QCOMPARE(fixture.store.unfinished(), 0);
    const QString held = fixture.add();
    fixture.finish(held);
    fixture.finish(held);
    fixture.store.drop(held);
    fixture.store.drop(held);
    QCOMPARE(fixture.store.unfinished(), 0);
    QVERIFY(!fixture.add().isEmpty());
}

void ServiceStoreTest::aFailedRequestTellsItsError()
{
    Fixture fixture;
    const QString id = fixture.add(true);
    PictureResult failed;
    failed.error = {ErrorCode::EngineFailed, QStringLiteral("no")};
    fixture.store.finishPicture(id, failed);
    QCOMPARE(fixture.pollCode(id, true), ErrorCode::EngineFailed);
    QCOMPARE(fixture.store.unfinished(), 0);
}

void ServiceStoreTest::thePoolRunsTasksAndStops()
{
    WorkerPool pool(2);
    std::promise<void> ran;
    pool.post([&](const std::atomic<bool> &) { ran.set_value(); });
    QCOMPARE(ran.get_future().wait_for(30s), std::future_status::ready);
    std::promise<void> started;
    std::atomic<bool> sawCancel{false};
    pool.post([&](const std::atomic<bool> &cancelled) {
        started.set_value();
        while (!cancelled) {
            std::this_thread::yield();
        }
        sawCancel = true;
    });
    QCOMPARE(started.get_future().wait_for(30s), std::future_status::ready);
    pool.stop();
    QVERIFY(sawCancel);
    bool late = false;
    pool.post([&](const std::atomic<bool> &) { late = true; });
    pool.stop();
    QVERIFY(!late);
}

void ServiceStoreTest::thePoolSurvivesATaskThatThrows()
{
    WorkerPool pool(1);
    pool.post([](const std::atomic<bool> &) { throw std::bad_alloc(); });
    std::promise<void> ran;
    pool.post([&](const std::atomic<bool> &) { ran.set_value(); });
    QCOMPARE(ran.get_future().wait_for(30s), std::future_status::ready);
}

// A question holds a whole media library.
void ServiceStoreTest::thePoolKeepsNothingOfATask()
{
    WorkerPool pool(1);
    std::promise<void> gone;
    {
        std::shared_ptr<int> held(new int, [&gone](const int *number) {
            delete number;
            gone.set_value();
        });
        pool.post([held](const std::atomic<bool> &) {});
    }
    QCOMPARE(gone.get_future().wait_for(30s), std::future_status::ready);
}

QTEST_GUILESS_MAIN(ServiceStoreTest)
#include "tst_servicestore.moc"
