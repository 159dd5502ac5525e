#pragma once

#include "Adapters/OpenFX/Clip.h"
#include "Adapters/OpenFX/Interface/Core.h"
#include "Adapters/OpenFX/Span.h"

namespace Kerovane::OpenFX {

/// A rectangle of pixels at full size; rows count downwards.
struct PixelArea {
    Span columns;
    Span rows;

    bool contains(const PixelArea& other) const {
        return columns.contains(other.columns) && rows.contains(other.rows);
    }
};

/** The frame that the mosaic is laid out on. The mosaic's top left corner is that of `frame`. */
struct FrameArea {
    PixelArea frame;
    PixelArea region;       ///< where the source has pixels
    double pixelAspect = 1; ///< width of a pixel over its height

    /// Returns the frame in canonical coordinates: square pixels, y upwards.
    OfxRectD canonical() const;
};

/**
 * Returns the frame of `effect` at `time`: the project's window if the source's region lies within
 * it, and otherwise the region. With the window as the frame, the mosaic stands still while the
 * region changes. Throws Error if the host tells neither window nor region.
 */
FrameArea FrameAreaOf(OfxImageEffectHandle effect, const Clip& source, OfxTime time);

} // namespace Kerovane::OpenFX
