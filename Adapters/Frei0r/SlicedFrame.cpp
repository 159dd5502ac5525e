#include "Adapters/Frei0r/SlicedFrame.h"

#include <cstdint>
#include <cstdlib>

namespace Kerovane::Frei0r {

namespace {

/// More than any host uses. Slices further apart belong to different frames.
constexpr std::ptrdiff_t kMaxSlices = 256;

/// Returns the distance between two addresses in bytes, even if they are not in the same array.
std::ptrdiff_t Distance(const void* from, const void* to) {
    return static_cast<std::ptrdiff_t>(reinterpret_cast<std::uintptr_t>(to) -
                                       reinterpret_cast<std::uintptr_t>(from));
}

} // namespace

SlicedFrame::SlicedFrame(double time, const HostFrame& slice)
    : mTime(time), mFirst(slice), mPlaces{0} {}

bool SlicedFrame::add(double time, const HostFrame& slice) {
    const auto sliceBytes = static_cast<std::ptrdiff_t>(slice.pixels() * sizeof *slice.in);
    const std::ptrdiff_t distance = Distance(mFirst.in, slice.in);
    const bool fits = time == mTime && distance == Distance(mFirst.out, slice.out) &&
                      distance % sliceBytes == 0 && std::abs(distance / sliceBytes) < kMaxSlices;
    return fits && mPlaces.insert(distance / sliceBytes).second;
}

std::optional<HostFrame> SlicedFrame::joined() const {
    const std::ptrdiff_t top = *mPlaces.begin();
    const auto count = static_cast<std::ptrdiff_t>(mPlaces.size());
    if (*mPlaces.rbegin() - top != count - 1) {
        return std::nullopt;
    }
    const auto slicePixels = static_cast<std::ptrdiff_t>(mFirst.pixels());
    return HostFrame{.width = mFirst.width,
                     .height = mFirst.height * mPlaces.size(),
                     .in = mFirst.in + top * slicePixels,
                     .out = mFirst.out + top * slicePixels};
}

} // namespace Kerovane::Frei0r
