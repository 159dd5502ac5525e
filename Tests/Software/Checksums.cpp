#include "Software/Mosaic.h"
#include "Tests/Software/RandomMosaics.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

// Prints the checksums of some mosaics, which must be the same on every machine and with every
// compiler.

namespace Kerovane::Software {
namespace {

constexpr int kWidth = 333;
constexpr int kHeight = 217;

/// Returns pixels whose channels are random bytes times `step`. The alpha of every third pixel is
/// `white`, opaque.
template <typename Channel>
std::vector<Channel> SomePixels(std::minstd_rand& random, Channel white, Channel step) {
    std::vector<Channel> pixels(std::size_t{kWidth} * kHeight * 4);
    for (std::size_t index = 0; index < pixels.size(); ++index) {
        const bool isOpaque = index % 4 == 3 && index % 12 == 3;
        pixels[index] =
            isOpaque ? white : static_cast<Channel>(static_cast<Channel>(random() % 256) * step);
    }
    return pixels;
}

/// FNV-1a hash.
std::uint64_t Checksum(const std::vector<std::byte>& bytes) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const std::byte byte : bytes) {
        hash = (hash ^ static_cast<std::uint64_t>(byte)) * 0x100000001b3;
    }
    return hash;
}

template <typename Channel>
void Print(Host::Depth depth, std::minstd_rand& random, Channel white, Channel step) {
    for (int round = 0; round < 24; ++round) {
        const MosaicParameters parameters = RandomParameters(random);
        const auto pixels = SomePixels(random, white, step);
        std::vector<std::byte> drawn(pixels.size() * sizeof(Channel));
        const auto rowBytes =
            static_cast<std::ptrdiff_t>(std::size_t{kWidth} * 4 * sizeof(Channel));
        const Host::ConstPixelView in{reinterpret_cast<const std::byte*>(pixels.data()),
                                      rowBytes,
                                      kWidth,
                                      kHeight,
                                      depth,
                                      Host::ChannelOrder::Rgba};
        const Host::PixelView out{drawn.data(), rowBytes, kWidth, kHeight, depth};
        const Mosaic mosaic(parameters, kWidth, kHeight);
        mosaic.draw(in, out, 0, mosaic.bands());
        std::printf("%d bits, %2d: %016llx\n", int(depth), round,
                    static_cast<unsigned long long>(Checksum(drawn)));
    }
}

} // namespace
} // namespace Kerovane::Software

int main() {
    using namespace Kerovane;
    std::minstd_rand random(2); // NOLINT(cert-msc*): the same cases in every run
    Software::Print<std::uint8_t>(Host::Depth::Bits8, random, 255, 1);
    Software::Print<std::uint16_t>(Host::Depth::Bits16, random, 32768, 128);
    Software::Print<float>(Host::Depth::Float32, random, 1, 1 / 64.0F);
    return 0;
}
