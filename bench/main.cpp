#include "zlspdlog/zlspdlog.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLoggingCategory>

int main(int argc, char *argv[])
{
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
