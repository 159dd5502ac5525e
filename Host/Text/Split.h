#pragma once

#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// The parts of `text` between separators, empty ones included: at least one. Views into `text`.
std::vector<std::string_view> Split(std::string_view text, char separator);

} // namespace Kerovane::Host
