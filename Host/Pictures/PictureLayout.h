#pragma once

#include "Host/Pictures/OutputFormat.h"
#include "Host/Pictures/Picture.h"
#include "Host/Pictures/PictureSettings.h"

#include <OpenImageIO/imageio.h>

#include <string>
#include <vector>

namespace Kerovane::Host {

/** A part of a file that is written: what it says of itself, and which of its channels are whose.
 */
struct PartLayout {
    OIIO::ImageSpec file;               ///< as it is opened to be written
    std::vector<ColourChannels> layers; ///< of each, one after the other, the first channels
    bool isStraight = true;             ///< alpha does not premultiply colour
};

/// `formatOfPicture` is OpenImageIO's name of the format that the part comes from.
PartLayout LayoutOf(const PicturePart& part, const std::string& formatOfPicture,
                    const OutputFormat& format, const PictureSettings& settings);

/// What of the part a file with that layout lacks, a line each.
std::vector<std::string> LossesOf(const PicturePart& part, const PartLayout& layout,
                                  const OutputFormat& format, const PictureSettings& settings);

} // namespace Kerovane::Host
