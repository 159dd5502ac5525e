#pragma once

#include "Host/Parameters/Parameter.h"

#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// A shown name as people type it: lower case, a hyphen for each run of other characters.
/// "Size Random Seed" gives "size-random-seed".
std::string TypedName(std::string_view shownName);

/// "slider", "popup", ...: the word for a parameter's type.
std::string_view TypeName(const Parameter& parameter);

/// "percent", "degrees", or empty.
std::string_view UnitName(const Parameter& parameter);

/// The words that a popup or a checkbox can be set to, as typed; none for other parameters.
std::vector<std::string> TypedChoices(const Parameter& parameter);

/// What the parameter can be set to: "a whole number from 2 to 3000", "square or triangle".
std::string AcceptedValues(const Parameter& parameter);

/**
 * The value that `text` names: a number, with the parameter's unit behind it or without (50%, 20px,
 * 45deg), a popup's choice by typed name or by number, true or false for a checkbox in capitals or
 * not, or one of its other words. Throws Error if `text` is none or lies outside the valid range.
 */
double ParseValue(const Parameter& parameter, std::string_view text);

/// `value` in a form that ParseValue reads, to six digits if it isn't a whole number.
std::string FormatValue(const Parameter& parameter, double value);

} // namespace Kerovane::Host
