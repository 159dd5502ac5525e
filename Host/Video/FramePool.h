#pragma once

#include "Host/Video/LibAv.h"

namespace Kerovane::Host {

/**
 * Frames of one size and format, whose memory is reused once they are freed. Allocating and freeing
 * large aligned blocks instead would fragment the heap. Thread-safe.
 */
class FramePool {
public:
    /// Throws Error if the size or format is invalid.
    FramePool(AVPixelFormat format, int width, int height);

    /// Returns a frame with memory for its pixels. The frame may outlive the pool.
    AvFrame take();

private:
    AVPixelFormat mFormat;
    int mWidth;
    int mHeight;
    AvBufferPool mBuffers;
};

} // namespace Kerovane::Host
