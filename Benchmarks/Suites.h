#pragma once

namespace Kerovane::Benchmarks {

// Each hands its benchmarks over to the runner.
void RegisterFrameBenchmarks();
void RegisterStageBenchmarks();
void RegisterPictureBenchmarks();
void RegisterMathBenchmarks();

} // namespace Kerovane::Benchmarks
