// Times the whole render command, as a host sends it.

#include "Benchmarks/BenchmarkPicture.h"
#include "Benchmarks/EffectFrame.h"
#include "Benchmarks/Names.h"
#include "Benchmarks/Suites.h"

#include <benchmark/benchmark.h>

namespace Kerovane::Benchmarks {

namespace {

void Render(benchmark::State& state, Host::Depth depth, const Cells& cells) {
    const auto width = static_cast<A_long>(state.range(0));
    const auto height = static_cast<A_long>(state.range(1));
    const Host::World input = BenchmarkPicture(depth, width, height);
    Host::World output(depth, width, height);
    Host::Effect effect(TESSELUNE_MODULE);
    const Host::ParameterValues values = ValuesOf(cells, effect.parameters());
    effect.render({}, values, input, output);
    for ([[maybe_unused]] auto _ : state) {
        effect.render({}, values, input, output);
    }
    state.SetItemsProcessed(state.iterations() * width * height);
}

/// Times the effect's set-up and first frame, including the build of its programs.
void FirstFrame(benchmark::State& state) {
    const Host::World input = BenchmarkPicture(Host::Depth::Bits8, 1920, 1080);
    Host::World output(Host::Depth::Bits8, 1920, 1080);
    for ([[maybe_unused]] auto _ : state) {
        Host::Effect effect(TESSELUNE_MODULE);
        effect.render({}, {}, input, output);
    }
}

} // namespace

void RegisterFrameBenchmarks() {
    for (const Host::Depth depth : kDepths) {
        for (const int shapeType : {0, 1}) {
            for (const int levels : {0, 5}) {
                const Cells cells{.shapeType = shapeType,
                                  .levels = levels > 0 ? levels : Cells{}.levels,
                                  .sizeRandom = levels > 0 ? 100.0 : 0.0};
                const std::string name = "Render/" + BitsName(depth) + '/' + ShapeName(shapeType) +
                                         '/' + std::to_string(levels) + " levels";
                benchmark::RegisterBenchmark(name.c_str(), Render, depth, cells)
                    ->Args({640, 360})
                    ->Args({1920, 1080})
                    ->Args({3840, 2160})
                    ->Args({7680, 4320})
                    ->MeasureProcessCPUTime()
                    ->UseRealTime()
                    ->Unit(benchmark::kMillisecond);
            }
        }
    }
    benchmark::RegisterBenchmark("First frame", FirstFrame)
        ->MeasureProcessCPUTime()
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
}

} // namespace Kerovane::Benchmarks
