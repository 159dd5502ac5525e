#pragma once

#include "Host/Frames/FrameRenderer.h"

namespace Kerovane::Adapters {

/// Draws with the renderer that `values` choose, or as configured, and complains of what
/// Host::ChooseRenderer remarks. As Host::FrameRenderer::render otherwise.
void DrawFrame(Host::FrameRenderer& renderer, const Host::Frame& frame,
               const Host::ParameterValues& values, const Host::ConstPixelView& in,
               const Host::PixelView& out);

} // namespace Kerovane::Adapters
