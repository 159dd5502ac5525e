#pragma once

namespace Kerovane::Benchmarks {

// Each function registers its benchmarks with the runner.
void RegisterFrameBenchmarks();
void RegisterStageBenchmarks();
void RegisterPictureBenchmarks();
void RegisterMathBenchmarks();

} // namespace Kerovane::Benchmarks
