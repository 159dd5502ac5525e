#pragma once

#include "Host/Video/LibAv.h"

namespace Kerovane::Host {

/**
 * Frames of one size and format, whose memory is used again when they are gone. Memory of such a
 * size that comes and goes aligned would leave gaps in the heap that nothing else fits into. May be
 * used from several threads at a time.
 */
class FramePool {
public:
    /// Throws Error if there can be no such frames.
    FramePool(AVPixelFormat format, int width, int height);

    /// A frame with memory for its pixels, which may outlive the pool.
    AvFrame take();

private:
    AVPixelFormat mFormat;
    int mWidth;
    int mHeight;
    AvBufferPool mBuffers;
};

} // namespace Kerovane::Host
