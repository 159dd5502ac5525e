#include "Host/Pictures/FileHeader.h"

#include <fstream>
#include <system_error>

namespace Kerovane::Host {

namespace {

/// Converts ASCII letters to lower case, whatever the locale.
std::string LowerCase(std::string text) {
    for (char& letter : text) {
        if (letter >= 'A' && letter <= 'Z') {
            letter = static_cast<char>(letter - 'A' + 'a');
        }
    }
    return text;
}

} // namespace

FileHeader::FileHeader(const std::filesystem::path& file) {
    const std::string extension = file.extension().string();
    mExtension = LowerCase(extension.empty() ? extension : extension.substr(1));
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    mFileSize = error ? 0 : size;
    std::ifstream(file, std::ios::binary)
        .read(mBytes.data(), static_cast<std::streamsize>(mBytes.size()));
}

bool FileHeader::has(std::string_view bytes, std::size_t place) const {
    const std::string_view start(mBytes.data(), mBytes.size());
    return place < start.size() && start.substr(place, bytes.size()) == bytes;
}

std::uint64_t FileHeader::number(std::size_t place, std::size_t count, std::endian order) const {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = order == std::endian::big ? place + i : place + count - 1 - i;
        number = 256 * number + static_cast<unsigned char>(mBytes.at(at));
    }
    return number;
}

} // namespace Kerovane::Host
