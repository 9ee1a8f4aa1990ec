#include "support/fakeruntime.h"
#include "support/jsonshape.h"
#include "support/signalrecorder.h"

#include <sigslot/signal.hpp>

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <future>
#include <optional>
#include <string>
#include <thread>

using namespace tavro::testsupport;

class FakesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recorderKeepsCopiesThreadsAndOrder();
    void recorderWaitsForAnotherThread();
    void recorderMayGoBeforeOrAfterTheSignal();
    void runtimeKeepsItsCallsInOrder();
    void runtimeDeliversToTheHandler();
    void runtimeCountsDispatchQuestions();
    void dispatcherRunsOrDropsTasks_data();
    void dispatcherRunsOrDropsTasks();
    void dispatcherRunsWhatWasPostedBeforeItEnds();
    void shapeNamesKeysAndTypes();
    void rawValueKeepsTheSpelling();
};

void FakesTest::recorderKeepsCopiesThreadsAndOrder()
{
    sigslot::signal<const std::string &, int> first;
    sigslot::signal<std::string &> second;
    const SignalRecorder firsts(first);
    const SignalRecorder seconds(second);
    std::string text("a");
    first(text, 1);
    second(text);
    text = "b";
    std::thread([&] { first(text, 2); }).join();

    QCOMPARE(firsts.count(), 2);
    QCOMPARE(firsts.argument<0>(0), std::string("a"));
    QCOMPARE(firsts.argument<0>(1), std::string("b"));
    QCOMPARE(firsts.argument<1>(1), 2);
    QVERIFY(firsts.emission(0).thread == std::this_thread::get_id());
    QVERIFY(firsts.emission(1).thread != std::this_thread::get_id());
    QVERIFY(firsts.emission(0).number < seconds.emission(0).number);
    QVERIFY(seconds.emission(0).number < firsts.emission(1).number);
}

void FakesTest::recorderWaitsForAnotherThread()
{
    sigslot::signal<> signal;
    const SignalRecorder recorder(signal);
    std::promise<void> go;
    std::thread other([&, started = go.get_future()] {
        started.wait();
        signal();
        signal();
    });
    QVERIFY(!recorder.waitFor(1, std::chrono::milliseconds(1)));
    go.set_value();
    QVERIFY(recorder.blockFor(1));
    QVERIFY(recorder.waitFor(2));
    other.join();
}

void FakesTest::recorderMayGoBeforeOrAfterTheSignal()
{
    auto signal = std::make_optional<sigslot::signal<>>();
    {
        const SignalRecorder shortLived(*signal);
    }
    (*signal)();
    const SignalRecorder longLived(*signal);
    (*signal)();
    signal.reset();
    QCOMPARE(longLived.count(), 1);
}

void FakesTest::runtimeKeepsItsCallsInOrder()
{
    using Kind = FakeRuntime::Call::Kind;
    FakeRuntime runtime({true, true, false});
    QVERIFY(runtime.isProxyServer() && runtime.isProxyClient() && !runtime.isLocalExecutor());
    runtime.registerCallHandler("A", [](const char *, const char *, unsigned int) {});
    runtime.sendToClients("B", "x\0y", 3);
    runtime.sendToServer("C", nullptr, 0);
    runtime.unregisterCallHandler("A");
    const QVector<FakeRuntime::Call> calls = runtime.calls();
    QCOMPARE(calls.size(), 4);
    QVERIFY(calls.at(0).kind == Kind::Register && calls.at(0).name == "A");
    QVERIFY(calls.at(1).kind == Kind::ToClients && calls.at(1).payload == QByteArray("x\0y", 3)
            && !calls.at(1).dataWasNull);
    QVERIFY(calls.at(2).kind == Kind::ToServer && calls.at(2).dataWasNull && calls.at(2).size == 0);
    QCOMPARE(runtime.names(Kind::Unregister), QVector<QByteArray>{"A"});
    QVERIFY(!runtime.isRegistered("A"));
    QVERIFY(calls.at(1).number < calls.at(2).number);
}

void FakesTest::runtimeDeliversToTheHandler()
{
    FakeRuntime runtime;
    QByteArray received;
    bool wasNull = false;
    runtime.registerCallHandler("A", [&](const char *, const char *data, unsigned int size) {
        wasNull = data == nullptr;
        received = QByteArray(data, static_cast<int>(size));
    });
    QVERIFY(runtime.deliver("A", "payload"));
    QCOMPARE(received, QByteArrayLiteral("payload"));
    QVERIFY(runtime.deliver("A"));
    QVERIFY(wasNull);
    QVERIFY(!runtime.deliver("B"));
}

void FakesTest::runtimeCountsDispatchQuestions()
{
    FakeRuntime runtime;
    QVERIFY(!runtime.needsDispatch("file.cpp", 7));
    runtime.setNeedsDispatch(true);
    QVERIFY(runtime.needsDispatch("file.cpp", 8));
    QCOMPARE(runtime.needsDispatchCount(), 2);
    QCOMPARE(runtime.needsDispatchFile(), QByteArrayLiteral("file.cpp"));
    QCOMPARE(runtime.needsDispatchLine(), 8);
}

void FakesTest::dispatcherRunsOrDropsTasks_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("runs");
    QTest::addColumn<bool>("here");

    using Mode = FakeDispatcher::Mode;
    QTest::newRow("own thread") << int(Mode::OwnThread) << true << false;
    QTest::newRow("inline") << int(Mode::Inline) << true << true;
    QTest::newRow("drop") << int(Mode::Drop) << false << false;
    QTest::newRow("drop later") << int(Mode::DropLater) << false << false;
}

void FakesTest::dispatcherRunsOrDropsTasks()
{
    QFETCH(int, mode);
    QFETCH(bool, runs);
    QFETCH(bool, here);

    FakeDispatcher dispatcher;
    dispatcher.setMode(static_cast<FakeDispatcher::Mode>(mode));
    auto task = std::make_shared<std::packaged_task<std::thread::id()>>([] { return std::this_thread::get_id(); });
    std::future<std::thread::id> future = task->get_future();
    dispatcher.post([task = std::move(task)] { (*task)(); });
    QCOMPARE(future.wait_for(waitLimit), std::future_status::ready);
    QCOMPARE(dispatcher.postCount(), 1);
    QCOMPARE(dispatcher.runCount(), runs ? 1 : 0);
    if (runs)
        QCOMPARE(future.get() == std::this_thread::get_id(), here);
    else
        QVERIFY_EXCEPTION_THROWN(future.get(), std::future_error);
}

void FakesTest::dispatcherRunsWhatWasPostedBeforeItEnds()
{
    int runs = 0;
    {
        FakeDispatcher dispatcher;
        for (int task = 0; task < 100; ++task)
            dispatcher.post([&] { ++runs; });
    }
    QCOMPARE(runs, 100);
}

void FakesTest::shapeNamesKeysAndTypes()
{
    const QByteArray json = R"({"b": 1, "a": true, "c": "x", "d": [], "e": {}, "f": null})";
    QCOMPARE(shapeOf(QJsonDocument::fromJson(json).object()),
             QStringLiteral("a:bool b:number c:string d:array e:object f:null"));
    QCOMPARE(shapeOf({}), QString());
}

void FakesTest::rawValueKeepsTheSpelling()
{
    const QByteArray json = "{\n    \"a\": 3840,\n    \"b\": 1.0\n}\n";
    QCOMPARE(rawValueOf(json, "a"), QByteArrayLiteral("3840"));
    QCOMPARE(rawValueOf(json, "b"), QByteArrayLiteral("1.0"));
    QVERIFY(rawValueOf(json, "c").isNull());
}

QTEST_GUILESS_MAIN(FakesTest)
#include "tst_fakes.moc"
