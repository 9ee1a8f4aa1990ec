// A style sheet applied to a panel that has it already, beside one that it has not.

#include "conversation.h"

#include <benchmark/benchmark.h>

namespace tavro::aiassistant {

namespace {

constexpr int items = 1000;

void equalSheet(benchmark::State &state)
{
    auto &conversation = Conversation::ofAtLeast(items);
    const QString sheet = Conversation::sheet();
    for ([[maybe_unused]] auto iteration : state) {
        conversation.panel.updateStyleSheet(sheet);
        conversation.settle();
    }
}

void otherSheet(benchmark::State &state)
{
    auto &conversation = Conversation::ofAtLeast(items);
    const QString sheet = Conversation::sheet();
    const QString other = sheet + QStringLiteral("#copyButton { color: #123456; }");
    for ([[maybe_unused]] auto iteration : state) {
        conversation.panel.updateStyleSheet(other);
        conversation.settle();
        state.PauseTiming();
        conversation.panel.updateStyleSheet(sheet);
        conversation.settle();
        state.ResumeTiming();
    }
}

BENCHMARK(equalSheet)->Unit(benchmark::kMillisecond);
BENCHMARK(otherSheet)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace tavro::aiassistant
