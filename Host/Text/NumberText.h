#pragma once

#include "A.h"

#include <optional>
#include <string_view>

namespace Kerovane::Host {

/// Returns the finite number that `text` consists of, or nothing. The decimal separator is a point
/// in every locale.
std::optional<double> ParseNumber(std::string_view text);

/// Returns the integer that `text` consists of, or nothing.
std::optional<A_long> ParseWhole(std::string_view text);

} // namespace Kerovane::Host
