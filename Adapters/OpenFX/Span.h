#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Kerovane::OpenFX {

/// Whole positions along an axis, from `begin` up to but not including `end`.
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

/// For each place of a picture's row or column the place in another, or kNoPlace.
using Places = std::vector<std::ptrdiff_t>;
constexpr std::ptrdiff_t kNoPlace = -1;

/**
 * Where the pixels of `frame`, at full size, are read from an image that holds `image` in pixels of
 * its own: `scale` of them to one at full size. Pixels outside of `region`, at full size, have no
 * place. At the edges, which hosts round in their own ways, a pixel's width is bridged.
 */
Places PlacesToRead(const Span& frame, const Span& region, const Span& image, double scale);

/// Which pixels of `frame`, at full size, the centres of the pixels of `window` lie in, `scale` of
/// which make one at full size. Past its ends the last pixel counts.
Places PlacesToShow(const Span& window, const Span& frame, double scale);

/// Whether `places` follow one another without a gap.
bool IsRun(const Places& places);

} // namespace Kerovane::OpenFX
