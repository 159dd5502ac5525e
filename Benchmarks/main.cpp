#include "Suites.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

int main(int argc, char** argv) {
    // A program that is taken from the driver's cache on disk is not built, and would not be timed.
    ::setenv("MESA_SHADER_CACHE_DISABLE", "true", 0);

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    Kerovane::Benchmarks::RegisterFrameBenchmarks();
    Kerovane::Benchmarks::RegisterStageBenchmarks();
    Kerovane::Benchmarks::RegisterPictureBenchmarks();
    Kerovane::Benchmarks::RegisterMathBenchmarks();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
