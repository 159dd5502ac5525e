#pragma once

#include "Host/Frames/WorldView.h"
#include "Host/Video/FramePool.h"
#include "Host/Video/Orientation.h"
#include "Host/Video/ScalerPool.h"
#include "Host/Video/Yuv420.h"

#include <atomic>
#include <optional>

namespace Kerovane::Host {

// Between FFmpeg's frames and layers. Both ways may be used from several threads at a time.

/** Makes upright pixels of a movie's decoded frames. */
class FrameUnpacker {
public:
    /// For frames of `width` by `height` pixels as they are stored.
    FrameUnpacker(int width, int height, const PixelCoding& coding, Orientation orientation);

    /// Whether the frame has the size and pixels that the unpacker was made for.
    bool takes(const AVFrame& frame) const;

    /// Fills `out`, which has an effect's own form, any depth and the upright size.
    void unpack(const AVFrame& frame, const PixelView& out);

private:
    template <typename FileChannel>
    void unpackAs(const AVFrame& rgba, const PixelView& out) const;

    int mWidth;
    int mHeight;
    Orientation mOrientation;
    AVPixelFormat mFormat;
    AVPixelFormat mBetween; ///< RGBA of 8 or 16 bits
    FramePool mRgba;
    ScalerPool mScalers;
};

/** Makes frames for an encoder of pixels. */
class FramePacker {
public:
    FramePacker(int width, int height, const PixelCoding& coding);

    /// Packs `in`, which has an effect's own form; over black if the encoder's format has no alpha.
    AvFrame pack(const ConstPixelView& in);

    /// Whether a frame so far had holes that the format couldn't hold.
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
    std::optional<ScalerPool> mScalers; ///< nothing if there is nothing to convert
    std::optional<Yuv420> mYuv420;      ///< takes the place of the others for 8-bit layers
    std::atomic<bool> mLostAlpha = false;
};

} // namespace Kerovane::Host
