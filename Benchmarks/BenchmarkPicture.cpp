#include "Benchmarks/BenchmarkPicture.h"

#include <cstdint>
#include <random>

namespace Kerovane::Benchmarks {

namespace {

/// 0 to 255 at each place.
struct Colour {
    std::uint32_t red;
    std::uint32_t green;
    std::uint32_t blue;
};

/// `convert` makes a channel of a value from 0 to 255.
template <typename Pixel, typename Convert>
void Paint(Host::World& world, Convert convert) {
    std::minstd_rand grain; // NOLINT(cert-msc*): the same picture each time
    for (A_long y = 0; y < world.height(); ++y) {
        A_long x = 0;
        for (Pixel& pixel : world.row<Pixel>(y)) {
            const auto noise = static_cast<std::uint32_t>(grain() % 16);
            const Colour colour{
                .red = static_cast<std::uint32_t>(240 * std::int64_t{x} / world.width()) + noise,
                .green = static_cast<std::uint32_t>(240 * std::int64_t{y} / world.height()) + noise,
                .blue = 120 + noise};
            pixel = {convert(255U), convert(colour.red), convert(colour.green),
                     convert(colour.blue)};
            ++x;
        }
    }
}

} // namespace

Host::World BenchmarkPicture(Host::Depth depth, A_long width, A_long height) {
    Host::World world(depth, width, height);
    switch (depth) {
    case Host::Depth::Bits8:
        Paint<PF_Pixel8>(world, [](std::uint32_t value) { return static_cast<A_u_char>(value); });
        break;
    case Host::Depth::Bits16:
        Paint<PF_Pixel16>(world, [](std::uint32_t value) {
            return static_cast<A_u_short>(value * 32768U / 255U);
        });
        break;
    case Host::Depth::Float32:
        Paint<PF_PixelFloat>(
            world, [](std::uint32_t value) { return static_cast<PF_FpShort>(value) / 255.0F; });
        break;
    }
    return world;
}

} // namespace Kerovane::Benchmarks
