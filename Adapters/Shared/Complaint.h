#pragma once

#include <string>

namespace Kerovane::Adapters {

/// Writes `text` on standard error as a line of this plug-in's; each text once in a process.
void Complain(const std::string& text);

} // namespace Kerovane::Adapters
