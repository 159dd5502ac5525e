#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Kerovane::OpenFX {

/// Pixel positions along an axis, from `begin` up to but not including `end`.
struct Span {
    int begin = 0;
    int end = 0;

    int size() const { return std::max(end - begin, 0); }
    bool contains(const Span& other) const { return begin <= other.begin && other.end <= end; }
    bool operator==(const Span&) const = default;
};

inline Span Intersection(const Span& one, const Span& other) {
    return {std::max(one.begin, other.begin), std::min(one.end, other.end)};
}

/// For each pixel of one picture's row or column, the index of a pixel in another's, or kNoPlace.
using Places = std::vector<std::ptrdiff_t>;
constexpr std::ptrdiff_t kNoPlace = -1;

/**
 * Returns where the pixels of `frame`, at full size, are read from an image that covers `image` in
 * its own pixels, `scale` of which make one at full size. Pixels outside of `region`, at full size,
 * have no place. Hosts round edges differently, so a gap of one pixel at the edges is filled.
 */
Places PlacesToRead(const Span& frame, const Span& region, const Span& image, double scale);

/// Returns the pixels of `frame`, at full size, in which the centres of the pixels of `window` lie;
/// `scale` pixels of `window` make one at full size. Beyond the frame its outermost pixel counts.
Places PlacesToShow(const Span& window, const Span& frame, double scale);

/// Returns whether `places` are consecutive.
bool IsRun(const Places& places);

} // namespace Kerovane::OpenFX
