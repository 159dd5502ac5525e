#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/** What is known of a file before a reader opens it: its extension, size and first bytes. */
class FileHeader {
public:
    /// A file that cannot be read has size 0.
    explicit FileHeader(const std::filesystem::path& file);

    /// The extension in lower case, without the dot.
    const std::string& extension() const { return mExtension; }

    /// The file's size in bytes.
    std::uint64_t fileSize() const { return mFileSize; }

    /// Returns whether the file has `bytes` at the offset `place`. Returns false beyond the first
    /// kSize bytes.
    bool has(std::string_view bytes, std::size_t place = 0) const;

    /// Returns the unsigned number in the `count` bytes at the offset `place`, in byte order
    /// `order`. The bytes must be within the first kSize; those beyond the end of the file are 0.
    std::uint64_t number(std::size_t place, std::size_t count, std::endian order) const;

    static constexpr std::size_t kSize = 256; ///< how many bytes of the file are kept

private:
    std::string mExtension;
    std::uint64_t mFileSize = 0;
    std::array<char, kSize> mBytes{};
};

} // namespace Kerovane::Host
