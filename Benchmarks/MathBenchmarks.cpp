// Times operations of the math library that occur in inner loops.

#include "Benchmarks/Suites.h"
#include "Plugins/Shared/Math/Affine.h"
#include "Plugins/Shared/Math/Barycentric.h"
#include "Plugins/Shared/Math/Color.h"
#include "Plugins/Shared/Math/Mat4.h"
#include "Plugins/Shared/Math/Quaternion.h"

#include <benchmark/benchmark.h>

namespace Kerovane::Benchmarks {

namespace {

using namespace Tesselune;

Mat4 Placement() {
    Mat4 matrix;
    matrix.compose(Vec3(1.0, 2.0, 3.0), Quaternion(Vec3(0.0, 0.6, 0.8), 0.7), Vec3(2.0, 3.0, 4.0));
    return matrix;
}

/// Times `operation` on `values`. Hides from the compiler that the values stay the same.
template <typename Operation, typename... Values>
void Register(const char* name, Operation operation, Values... values) {
    benchmark::RegisterBenchmark(name, [=](benchmark::State& state) mutable {
        for ([[maybe_unused]] auto _ : state) {
            (benchmark::DoNotOptimize(values), ...);
            benchmark::DoNotOptimize(operation(values...));
        }
    });
}

} // namespace

void RegisterMathBenchmarks() {
    const Quaternion turn(Vec3(0.0, 0.6, 0.8), 0.7);
    const Quaternion otherTurn(Vec3(1.0, 0.0, 0.0), -1.1);
    Register(
        "Math/Mat4 times Mat4", [](const Mat4& a, const Mat4& b) { return a * b; }, Placement(),
        Placement());
    Register(
        "Math/Mat4 times Vec3", [](const Mat4& m, const Vec3& v) { return m * v; }, Placement(),
        Vec3(1.0, 2.0, 3.0));
    Register(
        "Math/Mat4 inverse",
        [](const Mat4& m) {
            Mat4 inverse;
            benchmark::DoNotOptimize(m.getInverse(inverse));
            return inverse;
        },
        Placement());
    Register(
        "Math/Mat4 decompose",
        [](const Mat4& m) {
            Vec3 position;
            Quaternion rotation;
            Vec3 scale;
            m.decompose(position, rotation, scale);
            return scale;
        },
        Placement());
    Register(
        "Math/Quaternion spherical interpolation",
        [](const Quaternion& a, const Quaternion& b) { return Quaternion::lerp(a, b, 0.3); }, turn,
        otherTurn);
    Register(
        "Math/Affine inverse", [](const Affine& a) { return a.getInverse(); },
        Affine(2.0, 0.5, -0.5, 3.0, 10.0, 20.0));
    Register(
        "Math/Color interpolation",
        [](const Color& a, const Color& b) { return Color::lerp(a, b, 0.3); },
        Color(0.1, 0.2, 0.3, 1.0), Color(0.9, 0.8, 0.7, 0.5));
}

} // namespace Kerovane::Benchmarks
