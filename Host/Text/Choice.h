#pragma once

#include "Host/Text/Error.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/// The place of `text` among `names`. Throws NoneOf(names, text) if it is none of them.
std::size_t PlaceAmong(std::span<const std::string> names, std::string_view text);

/// "takes a, b or c, not 'd'", and the nearest of `names` if one is near.
Error NoneOf(std::span<const std::string> names, std::string_view text);

} // namespace Kerovane::Host
