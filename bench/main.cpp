#include "zlspdlog/zlspdlog.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLoggingCategory>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <malloc.h>

namespace {

// The system's making of new pages is not what is measured. A short conversation takes those that the one before it
// left; without a reserve, a long one, which is still growing, would wait for new ones each time.
void reserveHeap()
{
    constexpr std::size_t reserve = std::size_t{1} << 30U;
    constexpr int noMaps = 0;
    constexpr int usualMaps = 65536;
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_MMAP_MAX, noMaps);
    void *const pages = std::malloc(reserve);
    benchmark::DoNotOptimize(pages);
    if (pages != nullptr)
        std::memset(pages, 1, reserve);
    benchmark::ClobberMemory();
    std::free(pages);
    mallopt(M_MMAP_MAX, usualMaps);
}

} // namespace

int main(int argc, char *argv[])
{
    reserveHeap();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    // The diagnostic lines cost more than what is measured, and a host switches them off.
    QLoggingCategory::setFilterRules(QStringLiteral("zvaiassistant.*.debug=false"));
    ZL::SpdlogApplication::instance().logger()->set_level(spdlog::level::off);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
