#pragma once

#include "Adapters/OpenFX/FrameArea.h"
#include "Adapters/OpenFX/HostImage.h"
#include "Host/Pixels/PixelView.h"

#include <functional>

namespace Kerovane::OpenFX {

/// Draws a picture at full size into one of its own size and depth.
using Draw = std::function<void(const Host::ConstPixelView& in, const Host::PixelView& out)>;

/**
 * Has the frame that `area` lays out drawn from the image `source` into the part `window` of the
 * image `output`, in its own pixels. The frame is drawn at full size whatever the scale of the
 * images: the source is enlarged without a filter, and each pixel of the output shows the one that
 * its centre lies in. So previews show the cells of the final picture.
 *
 * Images whose pixels the renderer takes as they are and that match the frame are read and written
 * in place.
 */
void DrawFrame(const FrameArea& area, const HostImage& source, const HostImage& output,
               const PixelArea& window, const Draw& draw);

} // namespace Kerovane::OpenFX
