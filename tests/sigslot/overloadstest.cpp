#include <sigslot/signal.hpp>

#include <QtTest>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using Signal = sigslot::signal<int>;

struct Receiver {
    void take(int) { }
};

template <typename Emitter, typename Arguments, typename = void>
struct Connects : std::false_type { };

template <typename Emitter, typename... Given>
struct Connects<Emitter, void(Given...),
                std::void_t<decltype(std::declval<Emitter &>().connect(std::declval<Given>()...))>> : std::true_type {
};

template <typename Emitter, typename Arguments, typename = void>
struct ConnectsExtended : std::false_type { };

template <typename Emitter, typename... Given>
struct ConnectsExtended<Emitter, void(Given...),
                        std::void_t<decltype(std::declval<Emitter &>().connect_extended(std::declval<Given>()...))>>
    : std::true_type { };

} // namespace

class OverloadsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wrongNumberOfParametersDoesNotCompile();
    void wrongOrderOfReceiverAndFunctionDoesNotCompile();
    void onlyTrackedObjectsGoWithAFunction();
};

void OverloadsTest::wrongNumberOfParametersDoesNotCompile()
{
    QVERIFY((Connects<Signal, void(void (*)(int))>::value));
    QVERIFY(!(Connects<Signal, void(void (*)())>::value));
    QVERIFY(!(Connects<Signal, void(void (*)(int, int))>::value));
    QVERIFY(!(Connects<Signal, void(void (*)(std::string))>::value));
    QVERIFY((Connects<Signal, void(void(Receiver::*)(int), Receiver *)>::value));
    QVERIFY(!(Connects<Signal, void(void(Receiver::*)(), Receiver *)>::value));
    QVERIFY(!(Connects<Signal, void(void(Receiver::*)(int), const Receiver *)>::value));
    QVERIFY(!(Connects<Signal, void(void (*)(sigslot::connection &, int))>::value));
    QVERIFY((ConnectsExtended<Signal, void(void (*)(sigslot::connection &, int))>::value));
    QVERIFY(!(ConnectsExtended<Signal, void(void (*)(int))>::value));
}

void OverloadsTest::wrongOrderOfReceiverAndFunctionDoesNotCompile()
{
    QVERIFY(!(Connects<Signal, void(Receiver *, void(Receiver::*)(int))>::value));
    QVERIFY(!(Connects<Signal, void(std::shared_ptr<Receiver>, void(Receiver::*)(int))>::value));
    QVERIFY(!(Connects<Signal, void(void(Receiver::*)(int))>::value));
    QVERIFY(!(Connects<Signal, void(void(Receiver::*)(int), int)>::value));
}

void OverloadsTest::onlyTrackedObjectsGoWithAFunction()
{
    QVERIFY((Connects<Signal, void(void (*)(int), std::shared_ptr<int>)>::value));
    QVERIFY(!(Connects<Signal, void(void (*)(int), Receiver *)>::value));
    QVERIFY(!(Connects<Signal, void(void (*)(int), std::unique_ptr<int>)>::value));
}

QTEST_GUILESS_MAIN(OverloadsTest)
#include "overloadstest.moc"
