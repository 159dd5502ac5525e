#pragma once

#include "Host/Parameters/Parameter.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// Returns a table of the parameters for people: a line for each, followed by its meaning.
/// `options` come from OptionNames.
std::string ParameterTable(const std::vector<Parameter>& parameters,
                           const std::vector<std::string>& options);

/// Returns a description of one parameter for people, a line for each property.
std::string ParameterDescription(const std::vector<Parameter>& parameters,
                                 const std::vector<std::string>& options, std::size_t index);

} // namespace Kerovane::Host
