#pragma once

#include "A.h"

namespace Kerovane::Host {

/** A moment in the host's terms: `ticks` of which `scale`, above 0, make a second. */
struct Time {
    A_long ticks = 0;
    A_u_long scale = 1;

    constexpr double seconds() const { return static_cast<double>(ticks) / scale; }
};

} // namespace Kerovane::Host
