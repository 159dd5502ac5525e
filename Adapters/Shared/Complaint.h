#pragma once

#include <string>

namespace Kerovane::Adapters {

/// Prints `text` to standard error, prefixed with "tesselune: ". Each text is printed once per
/// process.
void Complain(const std::string& text);

} // namespace Kerovane::Adapters
