#pragma once

#include "Host/Video/LibAv.h"
#include "Host/Video/MovieForm.h"

#include <mutex>
#include <vector>

namespace Kerovane::Host {

/// A pixel format and the meaning of its numbers.
struct PixelCoding {
    AVPixelFormat format = AV_PIX_FMT_NONE;
    ColorTags color;
};

/// Returns whether both encode colours in the same way.
bool HaveSameMeaning(const PixelCoding& one, const PixelCoding& other);

/**
 * Converts frames of one size between two pixel formats. Thread-safe: each thread borrows a
 * converter of its own.
 */
class ScalerPool {
public:
    /// Throws Error if FFmpeg cannot convert between the formats.
    ScalerPool(int width, int height, const PixelCoding& from, const PixelCoding& to);

    /// Fills `to`, whose pixels are allocated already.
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

/// Moves the range of values that some pixel formats imply into the tags: YUVJ420P becomes
/// full-range YUV420P.
PixelCoding Plain(PixelCoding coding);

/// Sets a frame's tags, because some encoders read the tags of frames instead of their own
/// settings.
void SetTags(AVFrame& frame, const ColorTags& color);

/// Returns a frame with uninitialized pixels.
AvFrame NewFrame(AVPixelFormat format, int width, int height);

/// Returns the bits of the format's widest channel.
int BitsOf(AVPixelFormat format);

bool HasAlpha(AVPixelFormat format);

/// Returns whether the format is RGB rather than luma and chroma.
bool IsRgb(AVPixelFormat format);

} // namespace Kerovane::Host
