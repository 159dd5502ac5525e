#pragma once

#include "A.h"

#include <optional>
#include <string_view>

namespace Kerovane::Host {

/// The finite number that all of `text` is, with a point for the decimals in every locale.
std::optional<double> ParseNumber(std::string_view text);

/// The whole number that all of `text` is.
std::optional<A_long> ParseWhole(std::string_view text);

} // namespace Kerovane::Host
