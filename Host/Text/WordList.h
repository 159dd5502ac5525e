#pragma once

#include <span>
#include <string>

namespace Kerovane::Host {

/// Joins words as alternatives: "a", "a or b", "a, b or c". Empty if there are no words.
std::string WordList(std::span<const std::string> words);

} // namespace Kerovane::Host
