#pragma once

#include "A.h"

namespace Kerovane::Host {

/**
 * A point in time as hosts state it: `ticks`, of which `scale` make a second. `scale` is above 0.
 */
struct Time {
    A_long ticks = 0;
    A_u_long scale = 1;

    constexpr double seconds() const { return static_cast<double>(ticks) / scale; }
};

} // namespace Kerovane::Host
