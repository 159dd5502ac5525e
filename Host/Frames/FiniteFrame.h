#pragma once

#include "Host/Pixels/PixelView.h"

#include <cstddef>
#include <vector>

namespace Kerovane::Host {

/**
 * A frame whose channels are finite numbers: NaN and infinities count as 0, channel by channel. A
 * frame that has none is looked at in place, others are copied. The pixels looked at outlive it.
 */
class FiniteFrame {
public:
    explicit FiniteFrame(const ConstPixelView& frame);

    const ConstPixelView& view() const { return mView; }

    /// Pixels with a channel that was not finite.
    std::size_t cleanedPixels() const { return mCleanedPixels; }

private:
    ConstPixelView mView;
    std::vector<std::byte> mCopy;
    std::size_t mCleanedPixels = 0;
};

} // namespace Kerovane::Host
