#pragma once

#include "Adapters/OpenFX/Clip.h"
#include "Adapters/OpenFX/Interface/Core.h"
#include "Adapters/OpenFX/Span.h"

namespace Kerovane::OpenFX {

/// A rectangle of pixels at full size, rows counted downwards.
struct PixelArea {
    Span columns;
    Span rows;

    bool contains(const PixelArea& other) const {
        return columns.contains(other.columns) && rows.contains(other.rows);
    }
};

/** Where the picture is laid out. The mosaic's top left corner is that of `frame`. */
struct FrameArea {
    PixelArea frame;
    PixelArea region;       ///< where the source has pixels
    double pixelAspect = 1; ///< width of a pixel over its height

    /// The frame in canonical coordinates: square pixels, upwards.
    OfxRectD canonical() const;
};

/**
 * The frame of `effect` at `time`: the project's window if the region of the source lies within, so
 * that the mosaic stands still while the region changes, else that region. Throws Error if the host
 * can't tell the region.
 */
FrameArea FrameAreaOf(OfxImageEffectHandle effect, const Clip& source, OfxTime time);

} // namespace Kerovane::OpenFX
