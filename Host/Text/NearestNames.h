#pragma once

#include <span>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/**
 * Returns "; did you mean size or size-level?" with the names that come nearest to a mistyped
 * `word` or begin with it: at most three, the nearest first. Returns an empty text if no name is
 * near.
 */
std::string Suggestion(std::string_view word, std::span<const std::string> names);

} // namespace Kerovane::Host
