#pragma once

#include "Host/Video/CellMap.h"
#include "Host/Video/FramePool.h"
#include "Host/Video/ScalerPool.h"

namespace Kerovane::Host {

/**
 * Draws the mosaic plane by plane on frames of luma and chroma. This avoids the conversions to and
 * from RGB, which take longer than the drawing and lose a little colour. A chroma sample that
 * covers several cells gets their mean.
 */
class PlanarMosaic {
public:
    /// `coding` must be one that canDraw() accepts.
    PlanarMosaic(CellMap map, const PixelCoding& coding);

    /// Returns whether the format consists of three planes of luma and chroma, without alpha, with
    /// integers of at most 16 bits.
    static bool canDraw(AVPixelFormat format);

    /// Returns a new frame with the mosaic of `in`. `in` must have the size of the constructor's
    /// `map` and the format of its `coding`. Thread-safe.
    AvFrame draw(const AVFrame& in);

private:
    CellMap mMap;
    PixelCoding mCoding;
    FramePool mFrames;
};

} // namespace Kerovane::Host
