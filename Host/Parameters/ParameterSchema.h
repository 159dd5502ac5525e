#pragma once

#include "Host/Parameters/Parameter.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// The parameters as JSON for programs: all that the effect declares of them, what they mean, and
/// their `options`, which are those of OptionNames.
std::string ParameterSchema(const std::vector<Parameter>& parameters,
                            const std::vector<std::string>& options);

/// One of them as in that list.
std::string ParameterSchema(const std::vector<Parameter>& parameters,
                            const std::vector<std::string>& options, std::size_t index);

} // namespace Kerovane::Host
