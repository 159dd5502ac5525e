#pragma once

#include <span>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/**
 * "; did you mean size or size-level?": those of `names` that someone who typed `word` may have
 * meant, the nearest first, at most three. Empty if none is near.
 */
std::string Suggestion(std::string_view word, std::span<const std::string> names);

} // namespace Kerovane::Host
