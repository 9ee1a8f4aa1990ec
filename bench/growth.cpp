// The answer list as the conversation grows: what one more item, one more line, and a change of all items cost.

#include "conversation.h"
#include "translate/translatemanager.h"
#include "widgets/answerwidget.h"
#include "widgets/autoresizetextbrowser_p.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include <cstddef>
#include <malloc.h>
#include <vector>

namespace tavro::aiassistant {

namespace {

constexpr int few = 10;

// A conversation of few items is soon made; it must not grow from one measurement to the next.
template <typename Measure>
void inConversation(const benchmark::State &state, Measure measure)
{
    const auto items = static_cast<int>(state.range(0));
    if (items > few)
        return measure(Conversation::ofAtLeast(items));
    Conversation conversation(items);
    measure(conversation);
}

void addItem(benchmark::State &state)
{
    inConversation(state, [&state](Conversation &conversation) {
        for ([[maybe_unused]] auto iteration : state) {
            conversation.list.addQuestionItem(Conversation::question());
            conversation.settle();
        }
    });
}

// An answer as the last item, which types only when it is told to.
AutoResizeTextBrowser *addHeldAnswer(Conversation &conversation, const std::string &text)
{
    ChatItemContext answer = Conversation::question();
    answer.message = text;
    conversation.list.addAnswerTextItem(answer);
    auto *const browser = conversation.list.findChildren<AutoResizeTextBrowser *>().back();
    AutoResizeTextBrowserAccess::of(*browser).typingTimer.setInterval(std::chrono::hours(1));
    AutoResizeTextBrowserAccess::of(*browser).cursorTimer.setInterval(std::chrono::hours(1));
    conversation.settle();
    return browser;
}

// Each tick ends a line of @p line, so that the item, the column and the list grow.
void measureLineEnds(benchmark::State &state, Conversation &conversation, const std::string &line)
{
    std::string text;
    for (int count = 0; count < 200; ++count)
        text += line + '\n';
    AutoResizeTextBrowser *const browser = addHeldAnswer(conversation, text);
    auto &d = AutoResizeTextBrowserAccess::of(*browser);
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        d.shownCount += static_cast<int>(line.size());
        d.show(d.shownCount, true);
        conversation.settle();
        state.ResumeTiming();
        browser->slotTypeTimeout();
        conversation.settle();
    }
    browser->stopTyping();
}

void newLineTick(benchmark::State &state)
{
    const std::string line = "The harbour clip plays on layer two at half of its volume, all others stay as is";
    inConversation(state, [&](Conversation &conversation) { measureLineEnds(state, conversation, line); });
}

// Next to nothing is painted, so that what grows with the conversation stands out.
void blankLineTick(benchmark::State &state)
{
    inConversation(state, [&state](Conversation &conversation) { measureLineEnds(state, conversation, {}); });
}

void turnItems(Conversation &conversation, bool on)
{
    conversation.list.setItemsEnabled(on);
    conversation.settle();
}

// More than the caches of a processor hold, for the benchmark to write to.
void emptyCaches()
{
    static std::vector<char> other(std::size_t{128} << 20U);
    for (std::size_t place = 0; place < other.size(); place += 64)
        ++other[place];
    benchmark::DoNotOptimize(other.data());
}

// Between a question, which turns the items off, and the end of its answer, which turns them on, lie thousands of
// paintings: of the items, nothing is in the caches. Were it measured at once again, a short conversation would come
// from the caches, and a long one from the memory.
void disableAndEnable(benchmark::State &state)
{
    auto &conversation = Conversation::ofAtLeast(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) {
        for (const bool on : {false, true}) {
            state.PauseTiming();
            emptyCaches();
            state.ResumeTiming();
            turnItems(conversation, on);
        }
    }
}

void disableAndEnableInCache(benchmark::State &state)
{
    auto &conversation = Conversation::ofAtLeast(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) {
        turnItems(conversation, false);
        turnItems(conversation, true);
    }
}

void retranslate(benchmark::State &state)
{
    auto &conversation = Conversation::ofAtLeast(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) {
        for (const auto *const language : {"rus", "en"}) {
            TranslateManager::instance().switchLanguage(QLatin1String(language));
            conversation.list.retranslate();
            conversation.settle();
        }
    }
}

void reset(benchmark::State &state)
{
    Conversation conversation(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) {
        conversation.list.reset();
        conversation.settle();
    }
}

// What of the heap a question and its answer, typed out, keep.
void textItems(benchmark::State &state)
{
    const auto items = static_cast<int>(state.range(0));
    Conversation conversation(few);
    const std::string answer = "The harbour clip plays on layer 2 at half volume.\nIt takes a minute.";
    const auto before = mallinfo2();
    for ([[maybe_unused]] auto iteration : state) {
        for (int count = 0; count < items; count += 2) {
            conversation.fill(1);
            auto *const browser = addHeldAnswer(conversation, answer);
            for (std::size_t typed = 0; typed <= answer.size(); ++typed)
                browser->slotTypeTimeout();
            conversation.settle();
        }
    }
    const auto after = mallinfo2();
    const std::size_t kept = after.uordblks + after.hblkhd - before.uordblks - before.hblkhd;
    state.counters["bytes"] = static_cast<double>(kept) / items;
}

void settings(benchmark::internal::Benchmark *bench)
{
    bench->ArgName("items")->Unit(benchmark::kMillisecond);
}

BENCHMARK(addItem)->Apply(settings)->Arg(few)->Arg(5000)->Iterations(30);
BENCHMARK(newLineTick)->Apply(settings)->Arg(few)->Arg(5000)->Iterations(60);
BENCHMARK(blankLineTick)->Apply(settings)->Arg(few)->Arg(5000)->Iterations(60);
BENCHMARK(disableAndEnable)->Apply(settings)->Arg(1000)->Arg(4000)->Iterations(10);
BENCHMARK(disableAndEnableInCache)->Apply(settings)->Arg(1000)->Arg(4000)->Iterations(10);
BENCHMARK(retranslate)->Apply(settings)->Arg(1000)->Arg(4000)->Iterations(3);
// These take a conversation of their own each time, which takes long to make.
BENCHMARK(reset)->Apply(settings)->Arg(1000)->Arg(4000)->Iterations(1)->Repetitions(3);
BENCHMARK(textItems)->Apply(settings)->Arg(1000)->Iterations(1)->Repetitions(3);

} // namespace

} // namespace tavro::aiassistant
