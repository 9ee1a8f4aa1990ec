#include <sigslot/signal.hpp>

#include <QtTest>

#include <functional>
#include <memory>
#include <string>

namespace {

using Signal = sigslot::signal<int>;

int functionSum = 0;

void addToSum(int value)
{
    functionSum += value;
}

void addToSumOnce(sigslot::connection &self, int value)
{
    functionSum += value;
    self.disconnect();
}

struct Adder {
    void operator()(int value) const { *sum += value; }

    int *sum;
};

struct Receiver {
    void take(int value) { sum += value; }
    void look(int value) const { looks += value; }
    void takeOnce(sigslot::connection &self, int value)
    {
        sum += value;
        self.disconnect();
    }
    void overloaded(int value) { sum += value; }
    void overloaded(double) { sum = -1; }
    static void takeStatic(int value) { functionSum += value; }

    int sum = 0;
    mutable int looks = 0;
};

struct DerivedReceiver : Receiver { };

struct Watcher : sigslot::observer {
    ~Watcher() override { disconnect_all(); }
    void take(int value) { sum += value; }
    void takeOnce(sigslot::connection &self, int value)
    {
        sum += value;
        self.disconnect();
    }

    int sum = 0;
};

} // namespace

class ConnectTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { functionSum = 0; }

    void functionIsCalled();
    void functionObjectIsCalled();
    void lambdaIsCalled();
    void stdFunctionAndBindAreCalled();
    void memberFunctionIsCalledOnItsObject();
    void memberFunctionOfABaseIsCalled();
    void overloadIsChosenByCast();
    void memberFunctionOfAnObserverIsCalled();
    void memberFunctionOfATrackedObjectIsCalled();
    void functionWithATrackedObjectIsCalled();
    void everyFormTakesAGroup();
    void extendedSlotGetsItsConnection();
    void everyExtendedFormTakesAGroup();
    void scopedFormsEndWithTheirObject();
    void freeFunctionTakesEveryForm();
    void slotMayReturnAValue();
    void slotMayTakeConvertibleArguments();
    void slotNeedNotBeCopyable();
    void signalWithoutArguments();
    void signalWithSeveralArguments();
    void singleThreadedSignalHasTheSameForms();
};

void ConnectTest::functionIsCalled()
{
    Signal signal;
    signal.connect(addToSum);
    signal.connect(&addToSum);
    signal.connect(&Receiver::takeStatic);
    signal(7);
    QCOMPARE(functionSum, 21);
}

void ConnectTest::functionObjectIsCalled()
{
    Signal signal;
    int sum = 0;
    const Adder kept{&sum};
    signal.connect(kept);
    signal.connect(Adder{&sum});
    signal(3);
    QCOMPARE(sum, 6);
}

void ConnectTest::lambdaIsCalled()
{
    Signal signal;
    int sum = 0;
    int calls = 0;
    signal.connect([&sum](int value) { sum += value; });
    signal.connect([&sum](auto &&...values) { sum += (0 + ... + values); });
    signal.connect([&calls, own = 0](int) mutable { calls = ++own; });
    signal(3);
    signal(4);
    QCOMPARE(sum, 14);
    QCOMPARE(calls, 2);
}

void ConnectTest::stdFunctionAndBindAreCalled()
{
    Signal signal;
    Receiver receiver;
    signal.connect(std::function<void(int)>(addToSum));
    signal.connect(std::bind(&Receiver::take, &receiver, std::placeholders::_1));
    signal(5);
    QCOMPARE(functionSum, 5);
    QCOMPARE(receiver.sum, 5);
}

void ConnectTest::memberFunctionIsCalledOnItsObject()
{
    Signal signal;
    Receiver receiver;
    Receiver other;
    const Receiver *readOnly = &receiver;
    signal.connect(&Receiver::take, &receiver);
    signal.connect(&Receiver::look, readOnly);
    signal(5);
    QCOMPARE(receiver.sum, 5);
    QCOMPARE(receiver.looks, 5);
    QCOMPARE(other.sum, 0);
}

void ConnectTest::memberFunctionOfABaseIsCalled()
{
    Signal signal;
    DerivedReceiver receiver;
    signal.connect(&DerivedReceiver::take, &receiver);
    signal(5);
    QCOMPARE(receiver.sum, 5);
}

void ConnectTest::overloadIsChosenByCast()
{
    Signal signal;
    Receiver receiver;
    signal.connect(static_cast<void (Receiver::*)(int)>(&Receiver::overloaded), &receiver);
    signal(5);
    QCOMPARE(receiver.sum, 5);
}

void ConnectTest::memberFunctionOfAnObserverIsCalled()
{
    Signal signal;
    Watcher watcher;
    signal.connect(&Watcher::take, &watcher);
    signal(5);
    QCOMPARE(watcher.sum, 5);
}

void ConnectTest::memberFunctionOfATrackedObjectIsCalled()
{
    Signal signal;
    const auto receiver = std::make_shared<Receiver>();
    signal.connect(&Receiver::take, receiver);
    signal.connect(&Receiver::take, std::weak_ptr<Receiver>(receiver));
    signal.connect(&Receiver::look, std::shared_ptr<const Receiver>(receiver));
    signal(5);
    QCOMPARE(receiver->sum, 10);
    QCOMPARE(receiver->looks, 5);
}

void ConnectTest::functionWithATrackedObjectIsCalled()
{
    Signal signal;
    const std::shared_ptr<void> token = std::make_shared<int>(0);
    int sum = 0;
    signal.connect(addToSum, token);
    signal.connect([&sum](int value) { sum += value; }, std::weak_ptr<void>(token));
    signal(5);
    QCOMPARE(functionSum, 5);
    QCOMPARE(sum, 5);
}

void ConnectTest::everyFormTakesAGroup()
{
    Signal signal;
    Receiver receiver;
    Watcher watcher;
    const auto tracked = std::make_shared<Receiver>();
    signal.connect(addToSum, 7);
    signal.connect(&Receiver::take, &receiver, 7);
    signal.connect(&Watcher::take, &watcher, 7);
    signal.connect(&Receiver::take, tracked, 7);
    signal.connect(addToSum, tracked, 7);
    QCOMPARE(signal.disconnect(0), std::size_t(0));
    QCOMPARE(signal.disconnect(7), std::size_t(5));
}

void ConnectTest::extendedSlotGetsItsConnection()
{
    Signal signal;
    Receiver receiver;
    Watcher watcher;
    const auto tracked = std::make_shared<Receiver>();
    signal.connect_extended(addToSumOnce);
    signal.connect_extended([](auto &self, int value) {
        functionSum += value;
        self.disconnect();
    });
    signal.connect_extended(&Receiver::takeOnce, &receiver);
    signal.connect_extended(&Watcher::takeOnce, &watcher);
    signal.connect_extended(&Receiver::takeOnce, tracked);
    signal.connect_extended(addToSumOnce, tracked);
    QCOMPARE(signal.slot_count(), std::size_t(6));

    signal(1);
    signal(10);
    QCOMPARE(functionSum, 3);
    QCOMPARE(receiver.sum, 1);
    QCOMPARE(watcher.sum, 1);
    QCOMPARE(tracked->sum, 1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void ConnectTest::everyExtendedFormTakesAGroup()
{
    Signal signal;
    Receiver receiver;
    Watcher watcher;
    const auto tracked = std::make_shared<Receiver>();
    signal.connect_extended(addToSumOnce, 7);
    signal.connect_extended(&Receiver::takeOnce, &receiver, 7);
    signal.connect_extended(&Watcher::takeOnce, &watcher, 7);
    signal.connect_extended(&Receiver::takeOnce, tracked, 7);
    signal.connect_extended(addToSumOnce, tracked, 7);
    QCOMPARE(signal.disconnect(7), std::size_t(5));
}

void ConnectTest::scopedFormsEndWithTheirObject()
{
    Signal signal;
    Receiver receiver;
    const auto tracked = std::make_shared<Receiver>();
    {
        const sigslot::scoped_connection function = signal.connect_scoped(addToSum);
        const auto method = signal.connect_scoped(&Receiver::take, &receiver, 3);
        const auto trackedMethod = signal.connect_scoped(&Receiver::take, tracked);
        const auto guarded = signal.connect_scoped(addToSum, tracked, 3);
        signal(1);
        QCOMPARE(signal.slot_count(), std::size_t(4));
    }
    signal(10);
    QCOMPARE(functionSum, 2);
    QCOMPARE(receiver.sum, 1);
    QCOMPARE(tracked->sum, 1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void ConnectTest::freeFunctionTakesEveryForm()
{
    Signal signal;
    Receiver receiver;
    Watcher watcher;
    const auto tracked = std::make_shared<Receiver>();
    sigslot::connect(signal, addToSum);
    sigslot::connect(signal, addToSum, 7);
    sigslot::connect(signal, &Receiver::take, &receiver, 7);
    sigslot::connect(signal, &Watcher::take, &watcher);
    sigslot::connect(signal, &Receiver::take, tracked);
    const sigslot::connection last = sigslot::connect(signal, addToSum, tracked, 7);
    QVERIFY(last.connected());
    signal(1);
    QCOMPARE(functionSum, 3);
    QCOMPARE(receiver.sum + watcher.sum + tracked->sum, 3);
    QCOMPARE(signal.disconnect(7), std::size_t(3));
}

void ConnectTest::slotMayReturnAValue()
{
    Signal signal;
    int seen = 0;
    signal.connect([&seen](int value) { return std::to_string(seen = value); });
    signal(5);
    QCOMPARE(seen, 5);
}

void ConnectTest::slotMayTakeConvertibleArguments()
{
    sigslot::signal<int, const char *> signal;
    double number = 0;
    std::string text;
    signal.connect([&](double value, const std::string &words) {
        number = value;
        text = words;
    });
    signal(5, "five");
    QCOMPARE(number, 5.0);
    QCOMPARE(text, std::string("five"));
}

void ConnectTest::slotNeedNotBeCopyable()
{
    Signal signal;
    int seen = 0;
    signal.connect([&seen, factor = std::make_unique<int>(2)](int value) { seen = *factor * value; });
    signal(5);
    QCOMPARE(seen, 10);
}

void ConnectTest::signalWithoutArguments()
{
    sigslot::signal<> signal;
    int calls = 0;
    signal.connect([&calls] { ++calls; });
    signal();
    QCOMPARE(calls, 1);
}

void ConnectTest::signalWithSeveralArguments()
{
    sigslot::signal<int, const std::string &, bool> signal;
    std::string seen;
    signal.connect([&seen](int number, const std::string &text, bool loud) {
        seen = std::to_string(number) + text + (loud ? "!" : "");
    });
    signal(1, "st", true);
    QCOMPARE(seen, std::string("1st!"));
}

void ConnectTest::singleThreadedSignalHasTheSameForms()
{
    sigslot::signal_st<int> signal;
    Receiver receiver;
    const auto tracked = std::make_shared<Receiver>();
    signal.connect(addToSum);
    signal.connect(&Receiver::take, &receiver);
    signal.connect(&Receiver::take, tracked, 2);
    signal.connect_extended(addToSumOnce);
    const auto scoped = signal.connect_scoped(addToSum);
    signal(1);
    QCOMPARE(functionSum, 3);
    QCOMPARE(receiver.sum + tracked->sum, 2);
    QCOMPARE(signal.slot_count(), std::size_t(4));
}

QTEST_GUILESS_MAIN(ConnectTest)
#include "connecttest.moc"
