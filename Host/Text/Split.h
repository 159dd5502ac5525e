#pragma once

#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// Returns the parts of `text` between separators, empty parts included, so at least one part. The
/// parts are views into `text`.
std::vector<std::string_view> Split(std::string_view text, char separator);

} // namespace Kerovane::Host
