#pragma once

#include "Host/Pixels/PixelView.h"

#include <cstddef>
#include <vector>

namespace Kerovane::Host {

/**
 * A frame in which NaN and infinite channels are replaced by 0. A frame that has no such channels
 * is used in place and must outlive this object. Other frames are copied.
 */
class FiniteFrame {
public:
    explicit FiniteFrame(const ConstPixelView& frame);

    const ConstPixelView& view() const { return mView; }

    /// The number of pixels with a channel that was not finite.
    std::size_t cleanedPixels() const { return mCleanedPixels; }

private:
    ConstPixelView mView;
    std::vector<std::byte> mCopy;
    std::size_t mCleanedPixels = 0;
};

} // namespace Kerovane::Host
