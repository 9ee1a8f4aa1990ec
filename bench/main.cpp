#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLoggingCategory>

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    // The diagnostic lines cost more than what is measured, and a host switches them off.
    QLoggingCategory::setFilterRules(QStringLiteral("zvaiassistant.*.debug=false"));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
