#pragma once

#include "Host/Command/CommandOutline.h"

#include <string>
#include <string_view>

namespace Kerovane::Host {

/**
 * Returns a completion script for `shell`, which is bash or zsh. It completes subcommands, options
 * and their values. Throws Error for other shells.
 */
std::string CompletionScript(std::string_view shell, const CommandOutline& command);

} // namespace Kerovane::Host
