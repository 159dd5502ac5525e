#pragma once

#include "Host/Frames/FrameRenderer.h"
#include "Host/Panel/Footage.h"
#include "Host/Panel/Look.h"

namespace Kerovane::Host {

/** A rendered frame. */
struct PaintedFrame {
    SharedPicture source;
    World world;             ///< the rendered picture, in the source's depth
    double milliseconds = 0; ///< rendering time
};

/// Draws `in`, which may be any picture, into `out` of the same size and depth, with the values
/// that `look` has at a frame of `footage`. Throws Error if it cannot be drawn.
void Draw(FrameRenderer& renderer, const Footage& footage, const Look& look, A_long frame,
          const World& in, World& out);

/// Renders a frame of `footage` as the command does. Throws Error if it cannot be read or drawn.
PaintedFrame Paint(FrameRenderer& renderer, Footage& footage, const Look& look, A_long frame);

} // namespace Kerovane::Host
