#pragma once

#include "Adapters/Frei0r/HostFrame.h"

#include <cstddef>
#include <optional>
#include <set>

namespace Kerovane::Frei0r {

/**
 * A frame that the host passes in slices of equal height, in any order. MLT does so if a filter's
 * property "threads" asks for it: each slice arrives on a thread of its own, and nothing says how
 * many there are. Slices are matched by their addresses: the host keeps the memory of all slices in
 * place until the last one is rendered.
 */
class SlicedFrame {
public:
    SlicedFrame(double time, const HostFrame& slice);

    /// Adds `slice` and returns true if it is another slice of this frame.
    bool add(double time, const HostFrame& slice);

    /// Returns the slices so far as one frame; nothing if one in between is missing.
    std::optional<HostFrame> joined() const;

    std::size_t sliceCount() const { return mPlaces.size(); }

private:
    double mTime;
    HostFrame mFirst;
    /// The places of the known slices, counted downwards in slices from mFirst, which is at 0.
    std::set<std::ptrdiff_t> mPlaces;
};

} // namespace Kerovane::Frei0r
