#pragma once

#include "Host/Pictures/ColourLayers.h"
#include "Host/Pictures/Picture.h"

#include <filesystem>
#include <optional>

namespace Kerovane::Host {

/// How files are read.
struct ReadSetting {
    std::optional<Depth> depth{}; ///< the file's depth if not given
    LayerChoice choice{};
    bool keepOverscan = false; ///< pixels outside the display window are passed through
};

/**
 * Reads a picture file: grey or RGB, with or without alpha, from all of its parts or the chosen
 * one. Other channels of an OpenEXR file and other parts of OpenEXR and TIFF files are kept as
 * stored. What is not kept is listed in `losses`.
 *
 * A layer covers the display window if the format has one. Pixels missing from the data window are
 * transparent, or black if the layer has no alpha. Premultiplied colour is divided by alpha,
 * because layers have straight alpha. Colour values are not converted between colour spaces.
 * Rotated or mirrored pictures are turned upright.
 *
 * Without a given depth, files of up to 8 bits are read at 8 bits and all others as floats, because
 * 16-bit layers have only half of the levels of 16-bit files. Throws Error if the file cannot be
 * read as a picture, or has no colour layer to work on.
 */
Picture ReadPicture(const std::filesystem::path& file, const ReadSetting& setting = {});

/// Returns whether `file` is an animated GIF or WebP picture.
bool IsAnimated(const std::filesystem::path& file);

/**
 * Returns whether `file` is a picture that can be read completely and has the size stated in the
 * header of `other`. Throws Error if `other` cannot be read as a picture.
 */
bool HoldsPictureLike(const std::filesystem::path& file, const std::filesystem::path& other);

} // namespace Kerovane::Host
