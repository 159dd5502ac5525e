#pragma once

#include "Host/Frames/WorldView.h"
#include "Host/Video/FramePool.h"
#include "Host/Video/Orientation.h"
#include "Host/Video/ScalerPool.h"
#include "Host/Video/Yuv420.h"

#include <atomic>
#include <optional>

namespace Kerovane::Host {

// Conversion between FFmpeg's frames and layers. Both classes are thread-safe.

/** Converts decoded frames of a movie to upright pixels. */
class FrameUnpacker {
public:
    /// `width` and `height` are in pixels, before the picture is turned upright.
    FrameUnpacker(int width, int height, const PixelCoding& coding, Orientation orientation);

    /// Returns whether the frame has the size and pixel format that the unpacker was created for.
    bool takes(const AVFrame& frame) const;

    /// Fills `out`, which has a layer's channel order and alpha, any depth, and the size of the
    /// upright picture.
    void unpack(const AVFrame& frame, const PixelView& out);

private:
    template <typename FileChannel>
    void unpackAs(const AVFrame& rgba, const PixelView& out) const;

    int mWidth;
    int mHeight;
    Orientation mOrientation;
    AVPixelFormat mFormat;
    AVPixelFormat mBetween; ///< the intermediate format: RGBA with 8 or 16 bits
    FramePool mRgba;
    ScalerPool mScalers;
};

/** Converts layers to frames in an encoder's pixel format. */
class FramePacker {
public:
    FramePacker(int width, int height, const PixelCoding& coding);

    /// Returns `in`, which has a layer's channel order and alpha, as a frame. The frame is
    /// composited over black if the encoder's format has no alpha.
    AvFrame pack(const ConstPixelView& in);

    /// Returns whether any frame so far had transparency that the format cannot hold.
    bool hasLostAlpha() const { return mLostAlpha; }

private:
    AvFrame convert(const ConstPixelView& in);
    void fill(const ConstPixelView& in, AVFrame& rgba) const;

    template <typename FileChannel>
    static void fillAs(const ConstPixelView& in, AVFrame& rgba);

    PixelCoding mCoding;
    AVPixelFormat mBetween;
    FramePool mRgba;
    FramePool mFrames;
    std::optional<ScalerPool> mScalers; ///< nothing if RGBA needs no conversion
    std::optional<Yuv420> mYuv420;      ///< used for 8-bit layers instead of mScalers
    std::atomic<bool> mLostAlpha = false;
};

} // namespace Kerovane::Host
