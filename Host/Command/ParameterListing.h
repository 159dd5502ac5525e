#pragma once

#include "Host/Parameters/Parameter.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// The parameters as a table for people, a line each.
std::string ParameterTable(const std::vector<Parameter>& parameters);

/// All that there is to say of one parameter, for people.
std::string ParameterDescription(const std::vector<Parameter>& parameters, std::size_t index);

/// The parameters as JSON for programs: everything that the table has and more.
std::string ParameterJson(const std::vector<Parameter>& parameters);

/// One of them as in ParameterJson's list.
std::string ParameterJson(const std::vector<Parameter>& parameters, std::size_t index);

} // namespace Kerovane::Host
