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
 * Returns for each full-size pixel of `frame` the pixel of `image` to read. `image` counts the
 * image's own pixels, and `scale` of them make one at full size. Pixels outside the full-size span
 * `region` get kNoPlace. So do pixels beyond the image, except that a gap of one pixel at its edges
 * is filled, because hosts round edges differently.
 */
Places PlacesToRead(const Span& frame, const Span& region, const Span& image, double scale);

/// Returns for each pixel of `window` the full-size pixel of `frame` in which its centre lies.
/// `scale` pixels of `window` make one at full size. Centres beyond the frame get the frame's
/// outermost pixel.
Places PlacesToShow(const Span& window, const Span& frame, double scale);

/// Returns whether `places` are consecutive indices without kNoPlace.
bool IsRun(const Places& places);

} // namespace Kerovane::OpenFX
