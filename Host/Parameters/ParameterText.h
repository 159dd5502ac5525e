#pragma once

#include "Host/Parameters/Parameter.h"

#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// Returns a shown name as people type it: in lower case, with words of letters and digits joined
/// by hyphens. "Size Random Seed" gives "size-random-seed".
std::string TypedName(std::string_view shownName);

/// Returns the word for a parameter's type: "slider", "popup", ...
std::string_view TypeName(const Parameter& parameter);

/// Returns "percent", "degrees" or an empty text.
std::string_view UnitName(const Parameter& parameter);

/// Returns the words that a popup or checkbox accepts, as typed. Empty for other parameters.
std::vector<std::string> TypedChoices(const Parameter& parameter);

/// Returns what the parameter accepts, in words: "a whole number from 2 to 3000", "square or
/// triangle".
std::string AcceptedValues(const Parameter& parameter);

/**
 * Reads a value: a number with or without the parameter's unit (50%, 20px, 45deg), a popup's choice
 * by typed name or by number, or for a checkbox true, false or one of their synonyms in any case.
 * Throws Error if `text` is none of these or lies outside the valid range.
 */
double ParseValue(const Parameter& parameter, std::string_view text);

/// Formats `value` as ParseValue reads it. Numbers that may be fractions have up to six significant
/// digits.
std::string FormatValue(const Parameter& parameter, double value);

} // namespace Kerovane::Host
