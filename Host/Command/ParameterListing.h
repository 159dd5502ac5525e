#pragma once

#include "Host/Parameter.h"

#include <string>
#include <vector>

namespace Kerovane::Host {

/// The parameters as a table for people, a line each.
std::string ParameterTable(const std::vector<Parameter>& parameters);

/// The parameters as JSON for programs: everything that the table has and more.
std::string ParameterJson(const std::vector<Parameter>& parameters);

} // namespace Kerovane::Host
