#pragma once

#include "Host/Pictures/ColourLayers.h"
#include "Host/Pictures/Picture.h"

#include <filesystem>
#include <optional>

namespace Kerovane::Host {

/// How files are read.
struct ReadSetting {
    std::optional<Depth> depth{}; ///< else that of the file
    LayerChoice choice{};
    bool keepOverscan = false; ///< pixels outside of the display window pass unchanged
};

/**
 * Reads a picture file: grey or RGB, with or without alpha, of all its parts, or those chosen.
 * Everything else of an OpenEXR file is kept as it is stored; of others it is only named. Layers
 * are the display window, if a file has one: what its data window lacks of that is transparent,
 * or black if the file has no alpha. Layers have straight alpha, so premultiplied colour is divided
 * by it. Colour values are not managed. A picture that is stored turned or mirrored comes upright.
 *
 * The depth, if not given, follows the file: 8 bits for 8-bit files and below, 32 for everything
 * else, as layers of 16 bits have half of the levels of 16-bit files. Throws Error if the file
 * can't be read as a picture, or has no layer of colour to work on.
 */
Picture ReadPicture(const std::filesystem::path& file, const ReadSetting& setting = {});

/// Whether `file` is a picture that moves.
bool IsAnimated(const std::filesystem::path& file);

/**
 * Whether `file` holds a whole picture, down to its last pixel, of the size that `other` has by its
 * header. Throws Error if `other` can't be read as a picture.
 */
bool HoldsPictureLike(const std::filesystem::path& file, const std::filesystem::path& other);

} // namespace Kerovane::Host
