#pragma once

#include "Host/Video/LibAv.h"
#include "Host/Video/MovieForm.h"

#include <mutex>
#include <vector>

namespace Kerovane::Host {

/// A pixel format and what its numbers mean.
struct PixelCoding {
    AVPixelFormat format = AV_PIX_FMT_NONE;
    ColorTags color;
};

/// Whether numbers mean the same colours.
bool HaveSameMeaning(const PixelCoding& one, const PixelCoding& other);

/**
 * Converts frames of one size from one pixel format to another. May be used from several threads at
 * a time: each borrows a converter of its own.
 */
class ScalerPool {
public:
    /// Throws Error if FFmpeg can't convert between the two.
    ScalerPool(int width, int height, const PixelCoding& from, const PixelCoding& to);

    /// Fills `to`, whose memory there is.
    void convert(const AVFrame& from, AVFrame& to);

private:
    AvScaler make() const;
    AvScaler borrow();

    int mWidth;
    int mHeight;
    PixelCoding mFrom;
    PixelCoding mTo;
    std::mutex mMutex;
    std::vector<AvScaler> mFree;
};

/// The same without what the name of the pixel format says of the range: YUVJ420P is YUV420P.
PixelCoding Plain(PixelCoding coding);

/// Some encoders look there for what others are told when they are opened.
void SetTags(AVFrame& frame, const ColorTags& color);

/// An empty frame with memory for its pixels.
AvFrame NewFrame(AVPixelFormat format, int width, int height);

/// The bits of the format's widest channel.
int BitsOf(AVPixelFormat format);

bool HasAlpha(AVPixelFormat format);

/// Whether the channels are red, green and blue rather than luma and chroma.
bool IsRgb(AVPixelFormat format);

} // namespace Kerovane::Host
