#pragma once

#include <span>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/**
 * Returns "; did you mean size or size-level?" with those of `names` that come nearest to a
 * mistyped `word`: at most three, the nearest first. Returns an empty text if none is near.
 */
std::string Suggestion(std::string_view word, std::span<const std::string> names);

} // namespace Kerovane::Host
