#pragma once

#include "Host/Panel/PreviewView.h"
#include "Host/Pictures/Picture.h"

#include <string>

namespace Kerovane::Host {

/// The part as a JPEG, over its ground. The world has 8 bits. Throws Error if the view is none.
std::string EncodePreview(const World& world, const PreviewView& view);

/// The PNG that the command writes of `world`, which was made of `origin`.
std::string EncodeStill(const World& world, const Picture& origin, bool canLeaveHoles);

} // namespace Kerovane::Host
