#pragma once

#include "Host/Parameters/Parameter.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// The parameters as a table for people, a line each and what it means under it. `options` are
/// those of OptionNames.
std::string ParameterTable(const std::vector<Parameter>& parameters,
                           const std::vector<std::string>& options);

/// All that there is to say of one parameter, for people.
std::string ParameterDescription(const std::vector<Parameter>& parameters,
                                 const std::vector<std::string>& options, std::size_t index);

} // namespace Kerovane::Host
