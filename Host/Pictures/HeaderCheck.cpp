#include "Host/Pictures/HeaderCheck.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <limits>
#include <string_view>
#include <system_error>

namespace Kerovane::Host {

namespace {

/// The first bytes of a file; zeros where it is shorter.
class Header {
public:
    explicit Header(const std::filesystem::path& file) {
        std::ifstream(file, std::ios::binary)
            .read(mBytes.data(), static_cast<std::streamsize>(mBytes.size()));
    }

    bool startsWith(std::string_view signature) const {
        return std::string_view(mBytes.data(), mBytes.size()).starts_with(signature);
    }

    /// The number of `count` bytes at `place`; `order` tells which end of it comes first.
    std::uint64_t number(std::size_t place, std::size_t count, std::endian order) const {
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < count; ++i) {
            number =
                256 * number + byte(order == std::endian::big ? place + i : place + count - 1 - i);
        }
        return number;
    }

private:
    std::uint64_t byte(std::size_t place) const {
        return static_cast<unsigned char>(mBytes.at(place));
    }

    std::array<char, 36> mBytes{};
};

/// More pixels than the reader can count: it then writes anywhere in memory.
bool IsGifBeyondItsReader(const Header& header) {
    constexpr std::uint64_t kBytesPerPixel = 4;
    return header.startsWith("GIF") && header.number(6, 2, std::endian::little) *
                                               header.number(8, 2, std::endian::little) *
                                               kBytesPerPixel >
                                           std::numeric_limits<int>::max();
}

/// The reader takes and clears as much memory for the user's part as the header names for it.
bool IsDpxWithMoreThanItsFile(const Header& header, std::uint64_t fileSize) {
    constexpr std::size_t kUserSizePlace = 32;
    constexpr std::uint64_t kUndefined = 0xffffffff;
    const bool bigEndian = header.startsWith("SDPX");
    if (!bigEndian && !header.startsWith("XPDS")) {
        return false;
    }
    const std::uint64_t userSize =
        header.number(kUserSizePlace, 4, bigEndian ? std::endian::big : std::endian::little);
    return userSize > fileSize && userSize != kUndefined;
}

} // namespace

std::string ReasonNotToOpen(const std::filesystem::path& file) {
    const Header header(file);
    if (IsGifBeyondItsReader(header)) {
        return "it is larger than a GIF picture can be read";
    }
    std::error_code error;
    const std::uintmax_t fileSize = std::filesystem::file_size(file, error);
    if (!error && IsDpxWithMoreThanItsFile(header, fileSize)) {
        return "its header names more than the file holds";
    }
    return {};
}

} // namespace Kerovane::Host
