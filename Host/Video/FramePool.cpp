#include "Host/Video/FramePool.h"

extern "C" {
#include <libavutil/imgutils.h>
}

namespace Kerovane::Host {

namespace {

constexpr int kAlignment = 64; ///< of the start of each row, in bytes

} // namespace

FramePool::FramePool(AVPixelFormat format, int width, int height)
    : mFormat(format), mWidth(width), mHeight(height) {
    const int size = CheckAv(av_image_get_buffer_size(format, width, height, kAlignment),
                             "no memory for frames");
    mBuffers.reset(
        Allocated(av_buffer_pool_init(static_cast<std::size_t>(size) + kAlignment, nullptr)));
}

AvFrame FramePool::take() {
    AvFrame frame = NewFrame();
    frame->format = mFormat;
    frame->width = mWidth;
    frame->height = mHeight;
    frame->buf[0] = Allocated(av_buffer_pool_get(mBuffers.get()));
    CheckAv(av_image_fill_arrays(frame->data, frame->linesize, frame->buf[0]->data, mFormat, mWidth,
                                 mHeight, kAlignment),
            "no memory for a frame");
    return frame;
}

} // namespace Kerovane::Host
