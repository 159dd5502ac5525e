#include "Host/Pictures/GifHeader.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <limits>
#include <string_view>

namespace Kerovane::Host {

bool IsGifBeyondItsReader(const std::filesystem::path& file) {
    // The signature and its version, width and height, each of 16 bits, the low byte first.
    constexpr std::string_view kSignature = "GIF";
    constexpr std::size_t kWidthPlace = 6;
    constexpr std::size_t kHeightPlace = 8;
    std::array<char, 10> header{};
    std::ifstream stream(file, std::ios::binary);
    if (!stream.read(header.data(), header.size()) ||
        !std::string_view(header.data(), header.size()).starts_with(kSignature)) {
        return false;
    }
    const auto sizeAt = [&header](std::size_t place) {
        const auto byte = [&header](std::size_t at) {
            return std::int64_t{static_cast<unsigned char>(header.at(at))};
        };
        return byte(place) + 256 * byte(place + 1);
    };
    constexpr std::int64_t kBytesPerPixel = 4;
    return sizeAt(kWidthPlace) * sizeAt(kHeightPlace) * kBytesPerPixel >
           std::numeric_limits<int>::max();
}

} // namespace Kerovane::Host
