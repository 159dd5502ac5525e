#pragma once

#include "Host/Pictures/StoredPixels.h"
#include "Host/Session/World.h"

#include <OpenImageIO/imageio.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// The kind of colour channels in a file.
struct ColourChannels {
    bool isGrey = false;
    bool hasAlpha = true;
};

/** A colour layer for the effect to work on. */
struct PictureLayer {
    World world; ///< covers the display window
    ColourChannels channels{};
    std::vector<std::string> channelNames{}; ///< names in the file: red or grey first, alpha last
};

/** A part of a picture file: in some formats a file has several, such as views or pages. */
struct PicturePart {
    OIIO::ImageSpec origin;             ///< as declared by the file; the worlds' depth may differ
    std::vector<PictureLayer> layers{}; ///< to work on; none: the part is passed through
    StoredPixels stored{};              ///< the pixels that are passed through
};

/** The content of a picture file: its layers and its metadata. */
struct Picture {
    std::vector<PicturePart> parts;
    std::string format{};              ///< OpenImageIO's name; empty: not read from a file
    std::vector<std::string> losses{}; ///< what of the file is not in the picture, one line each

    /// The first layer to work on. Every picture has at least one.
    const PictureLayer& first() const;
    PictureLayer& first();

    /// The layout and metadata of the part that contains first().
    const OIIO::ImageSpec& origin() const;
};

/// Returns "other channels are left out: Z, left.R" for the channels lost if only the first layer
/// of `part` is kept. Empty if there are no others.
std::string LossOfOtherChannels(const PicturePart& part);

/// Returns "2 of the file's 3 parts are left out" if `kept` parts are kept. Empty if all are.
std::string LossOfParts(const Picture& picture, std::size_t kept);

/// Returns a picture with one layer that was not read from a file.
Picture PictureOf(World world, OIIO::ImageSpec origin = {}, ColourChannels channels = {});

} // namespace Kerovane::Host
