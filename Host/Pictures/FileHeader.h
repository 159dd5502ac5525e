#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/** What a file shows before it is given to a reader: its name's extension, size and first bytes. */
class FileHeader {
public:
    /// A file that can't be read has the size 0.
    explicit FileHeader(const std::filesystem::path& file);

    /// In small letters, without the dot.
    const std::string& extension() const { return mExtension; }

    /// In bytes.
    std::uint64_t fileSize() const { return mFileSize; }

    /// Whether the file has `bytes` at `place`; false beyond the first kSize bytes.
    bool has(std::string_view bytes, std::size_t place = 0) const;

    /// The number of `count` bytes at `place`, within the first kSize bytes; bytes beyond the
    /// file's end are 0. `order` tells which end of the number comes first.
    std::uint64_t number(std::size_t place, std::size_t count, std::endian order) const;

    static constexpr std::size_t kSize = 256; ///< bytes

private:
    std::string mExtension;
    std::uint64_t mFileSize = 0;
    std::array<char, kSize> mBytes{};
};

} // namespace Kerovane::Host
