#include "Benchmarks/BenchmarkPicture.h"

#include "Host/Pictures/PixelConversion.h"

#include <cstdint>
#include <random>
#include <type_traits>

namespace Kerovane::Benchmarks {

namespace {

/// Each channel is 0 to 255.
struct Colour {
    std::uint32_t red;
    std::uint32_t green;
    std::uint32_t blue;
};

template <typename Pixel>
void Paint(Host::World& world) {
    const auto convert = [](std::uint32_t value) {
        return Host::Rescale<Host::LayerChannel<Pixel>>(value, 255, Host::kLayerWhite<Pixel>);
    };
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
    Host::withPixelType(depth,
                        [&]<typename Pixel>(std::type_identity<Pixel>) { Paint<Pixel>(world); });
    return world;
}

} // namespace Kerovane::Benchmarks
