#pragma once

#include <span>
#include <string>

namespace Kerovane::Host {

/// The words as alternatives in a sentence: "a", "a or b", "a, b or c"; empty if there is none.
std::string WordList(std::span<const std::string> words);

} // namespace Kerovane::Host
