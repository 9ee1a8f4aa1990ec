#include "handpacking.h"
#include "multimachineproxy/callenvelope.h"

#include <benchmark/benchmark.h>

#include <string>

using namespace tavro::aiassistant;

namespace {

PictureGenerateInfo picture()
{
    return {"Watercolor", 1920, 1080, false, std::string(80, 'c'), true, 3, true, 0.5F, "logo text"};
}

/// A record whose longest text has @p length bytes.
template <typename Record>
Record sample(std::size_t length);

template <>
PictureGenerateInfo sample(std::size_t length)
{
    PictureGenerateInfo info = picture();
    info.content.assign(length, 'c');
    return info;
}

template <>
ChatItemBasic sample(std::size_t length)
{
    return {QuestionType::Picture, std::string(length, 'q'), picture(), "the service is busy"};
}

template <>
TextGeneratedPack sample(std::size_t length)
{
    return {"What is on layer 2?", std::string(length, 'a')};
}

template <>
PicturedGeneratedPack sample(std::size_t length)
{
    return {std::string(length, 'q'), picture(), {"a lake with mist", "http://127.0.0.1:8080/pictures/1"}};
}

std::size_t length(const benchmark::State &state)
{
    return static_cast<std::size_t>(state.range(0));
}

template <typename Call>
void measure(benchmark::State &state, Call call)
{
    for (auto round : state) {
        static_cast<void>(round);
        call();
        benchmark::ClobberMemory();
    }
}

template <typename Record>
std::string handPacked(const Record &record, std::size_t textBytes)
{
    HandWriter writer(textBytes);
    writer.write(record);
    return std::string(writer.bytes());
}

template <typename Record>
void packRecord(benchmark::State &state)
{
    const auto record = sample<Record>(length(state));
    const msgpack::sbuffer once = envelope::pack(record);
    if (std::string(once.data(), once.size()) != handPacked(record, length(state)))
        state.SkipWithError("the bytes by hand are others");
    measure(state, [&record] { benchmark::DoNotOptimize(envelope::pack(record).data()); });
}

template <typename Record>
void handPack(benchmark::State &state)
{
    const auto record = sample<Record>(length(state));
    measure(state, [&record, size = length(state)] {
        HandWriter writer(size);
        writer.write(record);
        benchmark::DoNotOptimize(writer.bytes().data());
    });
}

template <typename Record>
void unpackRecord(benchmark::State &state)
{
    const std::string bytes = handPacked(sample<Record>(length(state)), length(state));
    measure(state, [&bytes] {
        auto record = envelope::unpack<Record>(bytes.data(), static_cast<unsigned int>(bytes.size()));
        benchmark::DoNotOptimize(record);
    });
}

template <typename Record>
void handUnpack(benchmark::State &state)
{
    const std::string bytes = handPacked(sample<Record>(length(state)), length(state));
    measure(state, [&bytes] {
        Record record;
        HandReader(bytes).read(record);
        benchmark::DoNotOptimize(record);
    });
}

} // namespace

BENCHMARK_TEMPLATE(packRecord, PictureGenerateInfo)->Arg(80);
BENCHMARK_TEMPLATE(handPack, PictureGenerateInfo)->Arg(80);
BENCHMARK_TEMPLATE(unpackRecord, PictureGenerateInfo)->Arg(80);
BENCHMARK_TEMPLATE(handUnpack, PictureGenerateInfo)->Arg(80);
BENCHMARK_TEMPLATE(packRecord, ChatItemBasic)->Arg(80);
BENCHMARK_TEMPLATE(handPack, ChatItemBasic)->Arg(80);
BENCHMARK_TEMPLATE(unpackRecord, ChatItemBasic)->Arg(80);
BENCHMARK_TEMPLATE(handUnpack, ChatItemBasic)->Arg(80);
BENCHMARK_TEMPLATE(packRecord, TextGeneratedPack)->Arg(2000)->Arg(20000);
BENCHMARK_TEMPLATE(handPack, TextGeneratedPack)->Arg(2000)->Arg(20000);
BENCHMARK_TEMPLATE(unpackRecord, TextGeneratedPack)->Arg(2000)->Arg(20000);
BENCHMARK_TEMPLATE(handUnpack, TextGeneratedPack)->Arg(2000)->Arg(20000);
BENCHMARK_TEMPLATE(packRecord, PicturedGeneratedPack)->Arg(80);
BENCHMARK_TEMPLATE(handPack, PicturedGeneratedPack)->Arg(80);
BENCHMARK_TEMPLATE(unpackRecord, PicturedGeneratedPack)->Arg(80);
BENCHMARK_TEMPLATE(handUnpack, PicturedGeneratedPack)->Arg(80);
