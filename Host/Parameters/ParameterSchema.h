#pragma once

#include "Host/Parameters/Parameter.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// Returns the parameters as JSON for programs: everything the effect declares, their meanings, and
/// their `options`, which come from OptionNames.
std::string ParameterSchema(const std::vector<Parameter>& parameters,
                            const std::vector<std::string>& options);

/// Returns the entry of the parameter at `index` in that JSON.
std::string ParameterSchema(const std::vector<Parameter>& parameters,
                            const std::vector<std::string>& options, std::size_t index);

} // namespace Kerovane::Host
