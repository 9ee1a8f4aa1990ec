// What it costs to make the body of a text request, beside the serialisation that cannot be avoided.

#include "aicontroller/aicontroller_p.h"
#include "aicontroller/servicemessages.h"

#include <benchmark/benchmark.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace tavro::aiassistant {

namespace {

QJsonArray history(int messages)
{
    const QString question =
        QStringLiteral("Play the harbour clip on layer 2 at half volume, and tell me how long it runs.");
    const QString answer =
        QStringLiteral("Playing Harbour on layer 2 at 50 % volume.\nIt runs for 1 minute and 12 seconds. ")
        + QString(240, QLatin1Char('x'));
    QJsonArray array;
    for (int i = 0; i < messages; ++i)
        array.append(i % 2 == 0 ? message(Author::User, question) : message(Author::Assistant, answer));
    return array;
}

std::vector<std::pair<std::string, std::string>> mediaLibrary(int entries)
{
    std::vector<std::pair<std::string, std::string>> resources;
    for (int i = 0; i < entries; ++i)
        resources.emplace_back("media-" + std::to_string(i),
                               "Clip number " + std::to_string(i) + " of the library.mp4");
    return resources;
}

/// A controller in the middle of a conversation, which has sent its media library once.
struct Conversation {
    explicit Conversation(const benchmark::State &state)
        : d(AiControllerAccess::of(controller))
    {
        d.historyArray = history(static_cast<int>(state.range(0)));
        d.setResources(mediaLibrary(static_cast<int>(state.range(1))));
        d.mediaListArray();
    }

    AiController controller;
    decltype(AiControllerAccess::of(controller)) d;
};

void textRequest(benchmark::State &state)
{
    Conversation conversation(state);
    auto &d = conversation.d;
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(textRequestBody(true, false, d.historyArray, d.hostMediaList()));
}

void toJsonAlone(benchmark::State &state)
{
    Conversation conversation(state);
    const QJsonDocument document = QJsonDocument::fromJson(
        textRequestBody(true, false, conversation.d.historyArray, conversation.d.mediaListArray()));
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(document.toJson());
}

void mediaListFirstQuestion(benchmark::State &state)
{
    const auto resources = mediaLibrary(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        AiController controller;
        auto &d = AiControllerAccess::of(controller);
        d.setResources(resources);
        state.ResumeTiming();
        benchmark::DoNotOptimize(d.mediaListArray());
    }
}

void mediaListNextQuestion(benchmark::State &state)
{
    AiController controller;
    auto &d = AiControllerAccess::of(controller);
    d.setResources(mediaLibrary(static_cast<int>(state.range(0))));
    d.mediaListArray();
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(d.mediaListArray());
}

void sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgNames({"history", "media"});
    for (const int messages : {10, 100, 1000, 10000})
        benchmark->Args({messages, 10});
    for (const int entries : {1000, 100000})
        benchmark->Args({10, entries});
}

BENCHMARK(textRequest)->Apply(sizes);
BENCHMARK(toJsonAlone)->Apply(sizes);
BENCHMARK(mediaListFirstQuestion)->ArgName("media")->Arg(100000)->Iterations(5);
BENCHMARK(mediaListNextQuestion)->ArgName("media")->Arg(100000);

} // namespace

} // namespace tavro::aiassistant
