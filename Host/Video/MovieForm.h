#pragma once

#include "Host/Parameters/FrameRate.h"
#include "Host/Session/World.h"
#include "Host/Video/LibAv.h"

namespace Kerovane::Host {

/// A stream's tags that say how its numbers encode colours.
struct ColorTags {
    AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
    AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
    AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
    AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
    AVChromaLocation chroma = AVCHROMA_LOC_UNSPECIFIED;
};

/** The properties of a movie's pictures after they are turned upright. */
struct MovieForm {
    int width = 0; ///< in pixels
    int height = 0;
    int bits = 8; ///< bits per channel
    bool hasAlpha = false;
    bool isRgb = false;           ///< RGB instead of luma and chroma
    AVRational timeBase{1, 24};   ///< the unit of frame times, in seconds
    AVRational frameRate{24, 1};  ///< the average if it varies; 0/1 if unknown
    AVRational pixelAspect{0, 1}; ///< width of a pixel over its height; 0/1 if unknown
    ColorTags color{};
    AVPixelFormat stored = AV_PIX_FMT_NONE; ///< the file's format; none if pictures are turned

    /// Returns the smallest depth that holds the channels without loss.
    Depth depth() const;

    /// Returns the frame rate as a fraction with small terms, so that the effect's time can hold
    /// hours of frames. Returns the default rate if it is unknown.
    FrameRate rate() const;
};

} // namespace Kerovane::Host
