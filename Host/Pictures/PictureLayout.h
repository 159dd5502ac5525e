#pragma once

#include "Host/Pictures/OutputFormat.h"
#include "Host/Pictures/Picture.h"
#include "Host/Pictures/PictureSettings.h"

#include <OpenImageIO/imageio.h>

#include <string>
#include <vector>

namespace Kerovane::Host {

/** The layout of a part in the file to be written. */
struct PartLayout {
    OIIO::ImageSpec file;               ///< as given to the writer
    std::vector<ColourChannels> layers; ///< their channels come first in `file`, in this order
    bool isStraight = true;             ///< alpha is stored straight
};

/// Returns the layout of `part` in a file of `format`. `formatOfPicture` is OpenImageIO's name of
/// the format that the part was read from.
PartLayout LayoutOf(const PicturePart& part, const std::string& formatOfPicture,
                    const OutputFormat& format, const PictureSettings& settings);

/// Returns what a file with that layout loses of the part, one line each.
std::vector<std::string> LossesOf(const PicturePart& part, const PartLayout& layout,
                                  const OutputFormat& format, const PictureSettings& settings);

} // namespace Kerovane::Host
