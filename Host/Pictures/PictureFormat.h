#pragma once

#include "Host/Pictures/FileHeader.h"

#include <OpenImageIO/imageio.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// Bytes at a fixed offset that identify a format.
struct Signature {
    std::string_view bytes;
    std::size_t place = 0;
};

/**
 * A picture format: one that is read, or one that is recognized only to explain why it is not read.
 */
struct PictureFormat {
    std::string_view name{};   ///< shown to users; in the plural if the format is not read
    std::string_view reader{}; ///< OpenImageIO's name; empty if the format is not read
    std::vector<Signature> signatures{};        ///< any of them identifies it
    std::vector<std::string_view> extensions{}; ///< any of them identifies it too
    std::string_view whyNotRead{};

    /// Returns why the reader must not open the file, by its header; empty if it may. Null if
    /// nothing needs checking.
    std::string (*reasonNotToOpen)(const FileHeader&) = nullptr;
    /// Returns why the reader must not read the pixels, by the layout that it reported; empty if it
    /// may. Null if nothing needs checking.
    std::string (*reasonNotToRead)(const FileHeader&, const OIIO::ImageSpec&) = nullptr;
};

/// Returns the most reliable format whose signature or extension the file has. Returns null if the
/// file has none.
const PictureFormat* FormatOf(const FileHeader& header);

/// Returns why a file must not be given to a reader; empty if it may be. `format` may be null.
std::string ReasonNotToOpen(const PictureFormat* format, const FileHeader& header);

/// Returns why the pixels of an opened file must not be read; empty if they may be.
std::string ReasonNotToRead(const PictureFormat& format, const FileHeader& header,
                            const OIIO::ImageSpec& layout);

} // namespace Kerovane::Host
