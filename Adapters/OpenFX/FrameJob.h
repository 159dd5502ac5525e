#pragma once

#include "Adapters/OpenFX/FrameArea.h"
#include "Adapters/OpenFX/HostImage.h"
#include "Host/Pixels/PixelView.h"

#include <functional>

namespace Kerovane::OpenFX {

/// Draws a full-size picture into another of the same size and depth.
using Draw = std::function<void(const Host::ConstPixelView& in, const Host::PixelView& out)>;

/**
 * Draws the frame `area` with `draw`. Reads the image `source` and fills the part `window` of the
 * image `output`; `window` is in the output's own pixels. The frame is drawn at full size whatever
 * the scale of the images: the source is enlarged without a filter, and each pixel of the output
 * shows the full-size pixel in which its centre lies. Previews therefore show the cells of the
 * final picture.
 *
 * Images that match the frame, with pixels that the renderer supports, are read and written in
 * place.
 */
void DrawFrame(const FrameArea& area, const HostImage& source, const HostImage& output,
               const PixelArea& window, const Draw& draw);

} // namespace Kerovane::OpenFX
