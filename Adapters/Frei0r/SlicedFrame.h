#pragma once

#include "Adapters/Frei0r/HostFrame.h"

#include <cstddef>
#include <optional>
#include <set>

namespace Kerovane::Frei0r {

/**
 * A frame that the host hands over in slices of one height, in any order: MLT does so if a
 * filter's property "threads" asks for it, each slice on a thread of its own, and tells nobody how
 * many there are. What belongs together shows in the addresses. All slices of a frame stay in place
 * until the host has the last one back.
 */
class SlicedFrame {
public:
    SlicedFrame(double time, const HostFrame& slice);

    /// Takes `slice` in if it is a further one of this frame, and tells whether it is.
    bool add(double time, const HostFrame& slice);

    /// The slices so far as one frame; nothing while one in between is missing.
    std::optional<HostFrame> joined() const;

    std::size_t sliceCount() const { return mPlaces.size(); }

private:
    double mTime;
    HostFrame mFirst;
    std::set<std::ptrdiff_t> mPlaces; ///< in slices below mFirst, which is at 0
};

} // namespace Kerovane::Frei0r
