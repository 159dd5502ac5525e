#pragma once

#include "Host/Pictures/FileHeader.h"

#include <OpenImageIO/imageio.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// Bytes that the files of a format have at a place.
struct Signature {
    std::string_view bytes;
    std::size_t place = 0;
};

/** A format of picture files, read or known only to be refused by its name. */
struct PictureFormat {
    std::string_view name{};   ///< for users; in the plural if it is not read
    std::string_view reader{}; ///< OpenImageIO's name of its reader; empty if it is not read
    std::vector<Signature> signatures{};        ///< any of them tells it
    std::vector<std::string_view> extensions{}; ///< each tells it too; for what has no signature
    std::string_view whyNotRead{};

    /// What the header claims beyond what the reader can take; null if nothing is to be checked.
    std::string (*claimBeforeOpening)(const FileHeader&) = nullptr;
    /// The same once the reader has told the picture's layout.
    std::string (*claimBeforeReading)(const FileHeader&, const OIIO::ImageSpec&) = nullptr;
};

/// The format by the file's content, else by its extension; null if there is none.
const PictureFormat* FormatOf(const FileHeader& header);

/// Why a file of `format`, which may be null, must not be given to a reader; empty if it may.
std::string ReasonNotToOpen(const PictureFormat* format, const FileHeader& header);

/// Why the pixels of a file that its reader has opened must not be read; empty if they may.
std::string ReasonNotToRead(const PictureFormat& format, const FileHeader& header,
                            const OIIO::ImageSpec& layout);

} // namespace Kerovane::Host
