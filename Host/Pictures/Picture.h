#pragma once

#include "Host/Pictures/StoredPixels.h"
#include "Host/Session/World.h"

#include <OpenImageIO/imageio.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// Which channels colour has in a file.
struct ColourChannels {
    bool isGrey = false;
    bool hasAlpha = true;
};

/** A layer of colour: what the effect works on. */
struct PictureLayer {
    World world; ///< the display window
    ColourChannels channels{};
    std::vector<std::string> channelNames{}; ///< in the file, red or grey first, alpha last
};

/** One of the parts that some formats' files are made of: a view or a page. */
struct PicturePart {
    OIIO::ImageSpec origin; ///< as the file declared it; the worlds may differ from it in depth
    std::vector<PictureLayer> layers{}; ///< those to work on; empty if the part passes unchanged
    StoredPixels stored{};              ///< what passes unchanged
};

/** A picture file's content: its pixels as layers, and what the file says beside them. */
struct Picture {
    std::vector<PicturePart> parts;
    std::string format{};              ///< OpenImageIO's name of it; empty if there is no file
    std::vector<std::string> losses{}; ///< what of the file isn't here, a line each

    /// The first layer to work on; every picture has one.
    const PictureLayer& first() const;
    PictureLayer& first();

    /// What the file says of the part that has it.
    const OIIO::ImageSpec& origin() const;
};

/// "other channels are left out: Z, left.R", for where the first layer of `part` goes alone; empty
/// if it has no others.
std::string LossOfOtherChannels(const PicturePart& part);

/// "2 of the file's 3 parts are left out"; empty if `kept` is all of them.
std::string LossOfParts(const Picture& picture, std::size_t kept);

/// A picture of one layer, from elsewhere than a file.
Picture PictureOf(World world, OIIO::ImageSpec origin = {}, ColourChannels channels = {});

} // namespace Kerovane::Host
