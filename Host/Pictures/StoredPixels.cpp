#include "Host/Pictures/StoredPixels.h"

#include "Host/Pictures/Windows.h"

namespace Kerovane::Host {

StoredPixels::StoredPixels(const OIIO::ImageSpec& layout)
    : mLayout(layout), mPixelBytes(layout.pixel_bytes(true)) {
    for (int place = 0; place < layout.nchannels; ++place) {
        mOffsets.push_back(layout.pixel_bytes(0, place, true));
    }
    mPixels = std::make_unique_for_overwrite<std::byte[]>(
        mPixelBytes * static_cast<std::size_t>(layout.image_pixels()));
}

void StoredPixels::copyRow(int place, int y, int left, int right, OIIO::TypeDesc type,
                           std::byte* to, std::size_t pixelBytes) const {
    const Overlap columns(left, right - left, mLayout.x, mLayout.width);
    if (y < mLayout.y || y >= mLayout.y + mLayout.height || columns.size() == 0) {
        return;
    }
    const auto row = static_cast<std::size_t>(y - mLayout.y);
    const std::byte* from =
        mPixels.get() +
        (row * static_cast<std::size_t>(mLayout.width) + columns.from(mLayout.x)) * mPixelBytes +
        mOffsets[static_cast<std::size_t>(place)];
    const auto rowStride = static_cast<OIIO::stride_t>(columns.size() * mPixelBytes);
    OIIO::convert_image(1, static_cast<int>(columns.size()), 1, 1, from,
                        mLayout.channelformat(place), static_cast<OIIO::stride_t>(mPixelBytes),
                        rowStride, rowStride, to + columns.from(left) * pixelBytes, type,
                        static_cast<OIIO::stride_t>(pixelBytes), OIIO::AutoStride,
                        OIIO::AutoStride);
}

} // namespace Kerovane::Host
