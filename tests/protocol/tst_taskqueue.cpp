#include "protocol/taskqueue.h"
#include "protocol/worker.h"

#include <QTest>

#include <atomic>
#include <vector>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

class TaskQueueTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void runsTasksInTheirOrderOnOneThread();
    void tasksOfManyThreadsAllRun();
    void knowsItsWorker();
    void closingBreaksThePromisesOfWhatWaits();
    void closedQueueTakesNothing();
    void aTaskMayPushAnother();
};

void TaskQueueTest::runsTasksInTheirOrderOnOneThread()
{
    Worker worker;
    std::vector<int> ran;
    std::vector<std::thread::id> threads;
    for (int number = 0; number < 100; ++number)
        worker.queue()->push(std::packaged_task<void()>([&, number] {
            ran.push_back(number);
            threads.push_back(std::this_thread::get_id());
        }));
    worker.run([] { return 0; });
    QCOMPARE(ran.size(), std::size_t{100});
    for (int number = 0; number < 100; ++number)
        QCOMPARE(ran[static_cast<std::size_t>(number)], number);
    QVERIFY(std::all_of(threads.begin(), threads.end(), [&](auto id) { return id == threads.front(); }));
    QVERIFY(threads.front() != std::this_thread::get_id());
}

void TaskQueueTest::tasksOfManyThreadsAllRun()
{
    Worker worker;
    std::atomic<int> ran{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int task = 0; task < 250; ++task)
                worker.queue()->push(std::packaged_task<void()>([&] { ++ran; }));
        });
    for (std::thread &thread : threads)
        thread.join();
    worker.run([] { return 0; });
    QCOMPARE(ran.load(), 1000);
}

void TaskQueueTest::knowsItsWorker()
{
    Worker worker;
    QVERIFY(worker.run([&] { return worker.queue()->isWorkerThread(); }));
    QVERIFY(!worker.queue()->isWorkerThread());
}

void TaskQueueTest::closingBreaksThePromisesOfWhatWaits()
{
    TaskQueue queue;
    std::packaged_task<void()> task([] {});
    std::future<void> done = task.get_future();
    queue.push(std::move(task));
    queue.close();
    QVERIFY_EXCEPTION_THROWN(done.get(), std::future_error);
    QVERIFY(!queue.pop().valid());
}

void TaskQueueTest::closedQueueTakesNothing()
{
    TaskQueue queue;
    queue.close();
    std::packaged_task<void()> task([] {});
    std::future<void> done = task.get_future();
    queue.push(std::move(task));
    QVERIFY_EXCEPTION_THROWN(done.get(), std::future_error);
}

void TaskQueueTest::aTaskMayPushAnother()
{
    Worker worker;
    std::promise<int> second;
    worker.queue()->push(std::packaged_task<void()>(
        [&] { worker.queue()->push(std::packaged_task<void()>([&] { second.set_value(2); })); }));
    QCOMPARE(second.get_future().get(), 2);
}

QTEST_GUILESS_MAIN(TaskQueueTest)
#include "tst_taskqueue.moc"
