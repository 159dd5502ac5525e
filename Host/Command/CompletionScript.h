#pragma once

#include "Host/Command/CommandOutline.h"

#include <string>
#include <string_view>

namespace Kerovane::Host {

/**
 * A script for `shell`, bash or zsh, that completes a command and its commands, their options, and
 * what the options take. Throws Error for other shells.
 */
std::string CompletionScript(std::string_view shell, const CommandOutline& command);

} // namespace Kerovane::Host
