#include <benchmark/benchmark.h>
#include <sigslot/signal.hpp>

#include <QObject>

#include <cstdint>
#include <functional>
#include <vector>

namespace {

class Receiver : public QObject {
    Q_OBJECT

public:
    void take(int value) { sum += value; }

    std::int64_t sum = 0;
};

class Sender : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void sigValue(int value);
};

/// Every variant calls the same member function of as many receivers as the argument says.
std::vector<Receiver> makeReceivers(const benchmark::State &state)
{
    return std::vector<Receiver>(static_cast<std::size_t>(state.range(0)));
}

void keep(const std::vector<Receiver> &receivers)
{
    for (const Receiver &receiver : receivers)
        benchmark::DoNotOptimize(receiver.sum);
}

template <typename Call>
void measure(benchmark::State &state, const std::vector<Receiver> &receivers, Call call)
{
    for (auto round : state) {
        static_cast<void>(round);
        call();
        benchmark::ClobberMemory();
    }
    keep(receivers);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void directCalls(benchmark::State &state)
{
    auto receivers = makeReceivers(state);
    std::vector<std::function<void(int)>> functions;
    for (Receiver &receiver : receivers)
        functions.emplace_back([&receiver](int value) { receiver.take(value); });
    measure(state, receivers, [&functions] {
        for (const auto &function : functions)
            function(1);
    });
}

template <typename Signal>
void emission(benchmark::State &state)
{
    auto receivers = makeReceivers(state);
    Signal signal;
    for (Receiver &receiver : receivers)
        signal.connect(&Receiver::take, &receiver);
    measure(state, receivers, [&signal] { signal(1); });
}

void qtDirectSignal(benchmark::State &state)
{
    auto receivers = makeReceivers(state);
    Sender sender;
    for (Receiver &receiver : receivers)
        QObject::connect(&sender, &Sender::sigValue, &receiver, &Receiver::take, Qt::DirectConnection);
    measure(state, receivers, [&sender] { Q_EMIT sender.sigValue(1); });
}

} // namespace

BENCHMARK(directCalls)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK_TEMPLATE(emission, sigslot::signal<int>)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK_TEMPLATE(emission, sigslot::signal_st<int>)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(qtDirectSignal)->Arg(1)->Arg(10)->Arg(100);

#include "signals.moc"
