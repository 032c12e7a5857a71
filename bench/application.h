#pragma once

#include <QApplication>

#include <benchmark/benchmark.h>

namespace bench {

/// Runs the benchmarks that need program windows. Uses the offscreen platform unless the
/// environment names another one.
inline int runInApplication(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace bench
