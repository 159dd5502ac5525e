#pragma once

#include "Host/Video/CellMap.h"
#include "Host/Video/FramePool.h"
#include "Host/Video/ScalerPool.h"

namespace Kerovane::Host {

/**
 * Draws frames of luma and chroma as they are stored, plane by plane: without the ways to pixels of
 * red, green and blue and back, which take longer than the drawing, and which lose a little of the
 * colours. A sample of chroma that lies on several cells is their mean.
 */
class PlanarMosaic {
public:
    /// `coding` is one that can be drawn.
    PlanarMosaic(CellMap map, const PixelCoding& coding);

    /// Whether frames of that format are planes of luma and chroma without alpha.
    static bool canDraw(AVPixelFormat format);

    /// Returns a new frame; `in` is of the map's size and of the format. May be called from several
    /// threads at a time.
    AvFrame draw(const AVFrame& in);

private:
    CellMap mMap;
    PixelCoding mCoding;
    FramePool mFrames;
};

} // namespace Kerovane::Host
