#pragma once

#include "Host/Frames/FrameRenderer.h"
#include "Host/Panel/Footage.h"
#include "Host/Panel/Look.h"

namespace Kerovane::Host {

/** A frame as the effect makes it. */
struct PaintedFrame {
    SharedPicture source;
    World world;             ///< of the source's depth
    double milliseconds = 0; ///< that the renderer took
};

/// Draws `in`, which may be any picture, into `out` of the same form, with what `look` is at a
/// frame of `footage`. Throws Error if it can't be drawn.
void Draw(FrameRenderer& renderer, const Footage& footage, const Look& look, A_long frame,
          const World& in, World& out);

/// Draws a frame of `footage` as the command does. Throws Error if it can't be read or drawn.
PaintedFrame Paint(FrameRenderer& renderer, Footage& footage, const Look& look, A_long frame);

} // namespace Kerovane::Host
