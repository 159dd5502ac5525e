#pragma once

#include "Host/Panel/PreviewView.h"
#include "Host/Pictures/Picture.h"
#include "Host/Pictures/PictureSettings.h"

#include <string>

namespace Kerovane::Host {

/// Returns a copy with 8 bits per channel.
World In8Bits(const World& world);

/// Returns a JPEG of the part of `world` in `view`, over the view's ground. Throws Error if the
/// view is not within `world` or enlarges it.
std::string EncodePreview(const World& world, const PreviewView& view);

/// Returns the 8-bit PNG that the command writes for `world`, which was rendered from `source`.
std::string EncodeStill(World world, const Picture& source, PictureSettings settings);

} // namespace Kerovane::Host
