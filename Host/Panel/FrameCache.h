#pragma once

#include "Host/Panel/Footage.h"

#include <cstddef>
#include <deque>
#include <utility>

namespace Kerovane::Host {

/** The frames that were read last, as many as fit into a fixed amount of memory. */
class FrameCache {
public:
    /// Returns null if the frame is not cached.
    SharedPicture find(A_long number) const {
        for (const auto& [kept, picture] : mFrames) {
            if (kept == number) {
                return picture;
            }
        }
        return nullptr;
    }

    void add(A_long number, SharedPicture picture) {
        constexpr std::size_t kMostBytes = 128U << 20U;
        const std::size_t most = kMostBytes / (picture->first().world.bytes().size() + 1);
        while (!mFrames.empty() && mFrames.size() >= most) {
            mFrames.pop_front();
        }
        mFrames.emplace_back(number, std::move(picture));
    }

private:
    std::deque<std::pair<A_long, SharedPicture>> mFrames;
};

} // namespace Kerovane::Host
