#include "Benchmarks/Suites.h"
#include "Host/Frames/SilentThread.h"
#include "Platform/Memory/FreedMemory.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <ostream>

namespace {

using namespace Kerovane::Benchmarks;

/// Runs the benchmarks. Returns the exit status.
int Run(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    RegisterFrameBenchmarks();
    RegisterStageBenchmarks();
    RegisterPictureBenchmarks();
    RegisterMathBenchmarks();

    std::ostream output(std::cout.rdbuf()); // for the reporter: std::cout is silenced below
    const Kerovane::Host::SilentThread silent;
    const std::unique_ptr<benchmark::BenchmarkReporter> reporter(
        benchmark::CreateDefaultDisplayReporter());
    reporter->SetOutputStream(&output);
    benchmark::RunSpecifiedBenchmarks(reporter.get());
    benchmark::Shutdown();
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    // A program from the driver's disk cache would not be built, so its build would not be timed.
    ::setenv("MESA_SHADER_CACHE_DISABLE", "true", 0);
    Kerovane::Platform::KeepFreedMemory(); // as the command does
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "Benchmarks: " << error.what() << '\n';
        return 2;
    }
}
