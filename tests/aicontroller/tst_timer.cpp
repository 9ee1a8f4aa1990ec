#include "controllertest.h"

#include <QPointer>
#include <QThread>

#include <thread>

/// The real poll timer: how it is made, started and stopped, from this thread and from others.
class TimerTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void timerIsMadeButNotStarted();
    void secondTimerReplacesTheFirst();
    void initTimerIsInvokedByName();
    void startedTimerTicks();
    void tickLeadsFromTheQuestionToTheAnswer();
    void intervalIsKeptAcrossRequests();
    void withoutATimerNothingCrashes();
    void operationsOfAnotherThreadReachTheTimer();
    void failureReportedByAnotherThreadStopsIt_data();
    void failureReportedByAnotherThreadStopsIt();
    void controllerInAWorkerThreadPolls();
};

void TimerTest::timerIsMadeButNotStarted()
{
    QCOMPARE(f->d.pQueryTimer->parent(), &f->d);
    QCOMPARE(f->d.pQueryTimer->interval(), 5000);
    QCOMPARE(f->d.pQueryTimer->timerType(), Qt::PreciseTimer);
    QVERIFY(!f->d.pQueryTimer->isSingleShot());
    QVERIFY(!f->isTimerActive());
}

void TimerTest::secondTimerReplacesTheFirst()
{
    const QPointer<QTimer> first(f->d.pQueryTimer);
    f->controller.setSingleTickTime(1);
    f->controller.startTimer();
    f->controller.createTimer();
    settle();
    QVERIFY(!first);
    QCOMPARE(f->d.findChildren<QTimer *>().size(), 1);
    QCOMPARE(f->d.pQueryTimer->interval(), 5000);
    QVERIFY(!f->isTimerActive());
}

void TimerTest::initTimerIsInvokedByName()
{
    const QPointer<QTimer> first(f->d.pQueryTimer);
    QVERIFY(QMetaObject::invokeMethod(&f->d, "initTimer"));
    settle();
    QVERIFY(!first && f->d.pQueryTimer);
}

void TimerTest::startedTimerTicks()
{
    f->d.pQueryTimer->blockSignals(false);
    f->d.pQueryTimer->setInterval(1);
    f->controller.startTimer();
    QVERIFY(eventually([&] { return f->d.nTickCount >= 3; }));
    f->d.pQueryTimer->stop();
    QVERIFY(f->log.count(QStringLiteral("current answers have beeen returned!")) >= 3);
}

void TimerTest::tickLeadsFromTheQuestionToTheAnswer()
{
    f->d.pQueryTimer->blockSignals(false);
    f->d.pQueryTimer->setInterval(1);
    f->controller.setTimeout(1000000);
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    f->server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::working());
    f->server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::working());
    f->server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::readyText());
    f->controller.generateText(QStringLiteral("q"));
    QVERIFY(f->signalled.generateTextFinished.waitFor(1));
    QVERIFY(f->repliesDone());
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
    QCOMPARE(f->server.requestCount(), 4);
}

void TimerTest::intervalIsKeptAcrossRequests()
{
    f->controller.setSingleTickTime(7);
    QVERIFY(f->askText());
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QVERIFY(f->askPicture());
    QCOMPARE(f->d.pQueryTimer->interval(), 7000);
}

void TimerTest::withoutATimerNothingCrashes()
{
    AiController controller;
    const ControllerSignals signalled(controller);
    const auto &d = AiControllerAccess::of(controller);
    controller.setDomain(f->server.url());
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    f->server.expect("POST", ControllerFixture::picturePath(), ScriptedAnswer::bytes("x"));
    {
        const ExpectedLog withoutTimer(f->log, QStringLiteral("timer has not been created"), 4);
        controller.setSingleTickTime(3);
        controller.startTimer();
        controller.generateText(QStringLiteral("q"));
        QVERIFY(eventually([&] { return !d.strReqId.isEmpty(); }));
        controller.generatePicture({});
        QVERIFY(signalled.requestFailed.waitFor(1));
        QCOMPARE(withoutTimer.seen(), 4);
    }
    controller.errorOccured({});
    controller.requesetTimeout({});
    controller.requestFailedFinished({});
    controller.stopGenerate();
    QMetaObject::invokeMethod(&AiControllerAccess::of(controller), "slotOnTimeout");
    QVERIFY(!d.pQueryTimer);
    controller.createTimer();
    QCOMPARE(d.pQueryTimer->interval(), 5000);
}

void TimerTest::operationsOfAnotherThreadReachTheTimer()
{
    AiController controller;
    const auto &d = AiControllerAccess::of(controller);
    std::thread([&] {
        controller.createTimer();
        controller.setSingleTickTime(0);
        controller.startTimer();
    }).join();
    QVERIFY(!d.pQueryTimer);
    QVERIFY(eventually([&] { return d.pQueryTimer && d.pQueryTimer->isActive(); }));
    QCOMPARE(d.pQueryTimer->thread(), QThread::currentThread());
    QCOMPARE(d.pQueryTimer->interval(), 0);
    QVERIFY(eventually([&] { return d.nTickCount >= 2; }));
}

void TimerTest::failureReportedByAnotherThreadStopsIt_data()
{
    QTest::addColumn<int>("report");
    QTest::newRow("errorOccured") << 0;
    QTest::newRow("requestFailed") << 1;
    QTest::newRow("requesetTimeout") << 2;
    QTest::newRow("requestFailedFinished") << 3;
}

void TimerTest::failureReportedByAnotherThreadStopsIt()
{
    QFETCH(int, report);
    using Report = void (AiController::*)(const ChatItemBasic &);
    const Report reports[] = {&AiController::errorOccured, &AiController::requestFailed, &AiController::requesetTimeout,
                              &AiController::requestFailedFinished};
    const Report call = reports[report];
    f->controller.startTimer();
    std::thread::id other;
    std::thread([&] {
        other = std::this_thread::get_id();
        (f->controller.*call)(ChatItemBasic());
    }).join();
    QVERIFY(eventually([&] { return !f->isTimerActive(); }));
    const auto &s = f->signalled;
    QCOMPARE(s.errorOccured.count() + s.requestFailed.count() + s.requestTimeout.count(), 1);
    const auto thread = s.errorOccured.count() ? s.errorOccured.emission(0).thread
        : s.requestFailed.count()              ? s.requestFailed.emission(0).thread
                                               : s.requestTimeout.emission(0).thread;
    QVERIFY(thread == other);
}

void TimerTest::controllerInAWorkerThreadPolls()
{
    QThread worker;
    worker.start();
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    f->server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::readyText());
    auto *controller = new AiController;
    const ControllerSignals signalled(*controller);
    controller->moveToThread(&worker);
    controller->createTimer();
    controller->setSingleTickTime(0);
    controller->setTimeout(1000000);
    controller->setDomain(f->server.url());
    controller->generateText(QStringLiteral("q"));
    QVERIFY(signalled.generateTextFinished.blockFor(1));
    QVERIFY(signalled.generateTextFinished.emission(0).thread != std::this_thread::get_id());
    QCOMPARE(signalled.summary(), QStringLiteral("generateTextFinished:1"));
    controller->deleteLater();
    worker.quit();
    worker.wait();
}

QTEST_GUILESS_MAIN(TimerTest)
#include "tst_timer.moc"
