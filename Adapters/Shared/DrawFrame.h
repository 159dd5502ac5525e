#pragma once

#include "Host/Frames/FrameRenderer.h"

namespace Kerovane::Adapters {

/// Draws a frame with the renderer that `values` choose, or the configured one. Prints the remark
/// of Host::ChooseRenderer, if any. Otherwise like Host::FrameRenderer::render.
void DrawFrame(Host::FrameRenderer& renderer, const Host::Frame& frame,
               const Host::ParameterValues& values, const Host::ConstPixelView& in,
               const Host::PixelView& out);

} // namespace Kerovane::Adapters
