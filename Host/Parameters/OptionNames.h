#pragma once

#include "Host/Parameters/Parameter.h"

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/**
 * Returns each parameter's option without its hyphens, by index: its typed name, followed by the
 * disk id if the name is in `taken` or belongs to an earlier parameter. Empty for parameters
 * without a value.
 */
std::vector<std::string> OptionNames(const std::vector<Parameter>& parameters,
                                     std::set<std::string> taken);

/**
 * Returns the index of the parameter called `name`: its option, its shown name or its disk id.
 * `options` come from OptionNames. Throws Error if there is no such parameter.
 */
std::size_t IndexOfParameter(const std::vector<Parameter>& parameters,
                             const std::vector<std::string>& options, std::string_view name);

} // namespace Kerovane::Host
