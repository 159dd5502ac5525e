#pragma once

#include "Host/Parameters/FrameRate.h"
#include "Host/Session/World.h"
#include "Host/Video/LibAv.h"

namespace Kerovane::Host {

/// How numbers stand for colours, as a stream's tags say it.
struct ColorTags {
    AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
    AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
    AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
    AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
    AVChromaLocation chroma = AVCHROMA_LOC_UNSPECIFIED;
};

/** What a movie's pictures are like, seen upright. */
struct MovieForm {
    int width = 0; ///< pixels
    int height = 0;
    int bits = 8; ///< of a channel
    bool hasAlpha = false;
    bool isRgb = false;           ///< rather than luma and chroma
    AVRational timeBase{1, 24};   ///< seconds: the unit of frame times
    AVRational frameRate{24, 1};  ///< the average if times vary; 0/1 if unknown
    AVRational pixelAspect{0, 1}; ///< 0/1 if unknown
    ColorTags color{};
    AVPixelFormat stored = AV_PIX_FMT_NONE; ///< as what pixels; none if they don't stand upright

    /// The least depth of layers that holds the channels without a loss.
    Depth depth() const;

    /// The frame rate in terms so small that the effect's time holds hours of frames; the default
    /// if it is unknown.
    FrameRate rate() const;
};

} // namespace Kerovane::Host
