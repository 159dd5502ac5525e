#pragma once

#include "Host/Panel/Look.h"

#include <cstdint>
#include <vector>

namespace Kerovane::Host {

/// A look made by chance, of which most show much of the picture. The same for the same seed.
Look Surprise(const std::vector<Parameter>& parameters, Renderer renderer, std::uint64_t seed);

} // namespace Kerovane::Host
