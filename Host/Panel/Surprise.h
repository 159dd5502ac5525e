#pragma once

#include "Host/Panel/Look.h"

#include <cstdint>
#include <vector>

namespace Kerovane::Host {

/// Returns a random look that leaves much of the picture recognizable in most cases. The same seed
/// gives the same look.
Look Surprise(const std::vector<Parameter>& parameters, Renderer renderer, std::uint64_t seed);

} // namespace Kerovane::Host
