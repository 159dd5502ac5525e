#pragma once

#include "Host/Panel/PreviewView.h"
#include "Host/Pictures/Picture.h"
#include "Host/Pictures/PictureSettings.h"

#include <string>

namespace Kerovane::Host {

/// A copy with 8 bits a channel.
World In8Bits(const World& world);

/// The part as a JPEG, over its ground. Throws Error if the view is none.
std::string EncodePreview(const World& world, const PreviewView& view);

/// The PNG of 8 bits that the command writes of `world`, which was made of `source`.
std::string EncodeStill(World world, const Picture& source, PictureSettings settings);

} // namespace Kerovane::Host
