#pragma once

#include "Host/Command/CommandOutline.h"

#include <string>
#include <string_view>

namespace Kerovane::Host {

/// The manual page of a command, for man(1) to format.
std::string ManualPage(const CommandOutline& command, std::string_view version);

} // namespace Kerovane::Host
