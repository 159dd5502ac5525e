#pragma once

#include "Host/Pictures/Picture.h"

#include <filesystem>
#include <optional>

namespace Kerovane::Host {

/**
 * Reads the first picture of a file: grey or RGB, with or without alpha; other channels are kept
 * as they are if the file is an OpenEXR, else only named. The layer is the display window, where a
 * file has one: what its data window lacks of that is transparent, or black if the file has no
 * alpha, and what lies outside is left out. Layers have straight alpha, so premultiplied colour is
 * divided by it. Colour values are not managed. A picture that is stored turned or mirrored comes
 * upright.
 *
 * `depth`, where it is not given, follows the file: 8 bits for 8-bit files and below, 32 for
 * everything else, as layers of 16 bits have half of the levels of 16-bit files. Throws Error where
 * the file can't be read as a picture.
 */
Picture ReadPicture(const std::filesystem::path& file, std::optional<Depth> depth = std::nullopt);

/**
 * Whether `file` holds a whole picture, down to its last pixel, of the size that `other` has by its
 * header. Throws Error where `other` can't be read as a picture.
 */
bool HoldsPictureLike(const std::filesystem::path& file, const std::filesystem::path& other);

} // namespace Kerovane::Host
