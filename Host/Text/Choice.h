#pragma once

#include "Host/Text/Error.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/// Returns the index of `text` in `names`. Throws NoneOf(names, text) if `names` lacks it.
std::size_t PlaceAmong(std::span<const std::string> names, std::string_view text);

/// Returns the Error "takes a, b or c, not 'd'", with a suggestion if a name is similar.
Error NoneOf(std::span<const std::string> names, std::string_view text);

} // namespace Kerovane::Host
