#pragma once

#include "Host/Parameters/Parameter.h"

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/**
 * The option of each parameter, by index, without its hyphens: the typed name, with the disk id
 * behind it if the name is among `taken` or an earlier parameter has it. Empty for parameters
 * without a value.
 */
std::vector<std::string> OptionNames(const std::vector<Parameter>& parameters,
                                     std::set<std::string> taken);

/**
 * The index of the parameter that a user calls `name`: its option, its shown name or its disk id.
 * `options` are those of OptionNames. Throws Error if there is none.
 */
std::size_t IndexOfParameter(const std::vector<Parameter>& parameters,
                             const std::vector<std::string>& options, std::string_view name);

} // namespace Kerovane::Host
