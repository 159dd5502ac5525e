#pragma once

#include "Host/Parameters/Parameter.h"

#include <cstddef>
#include <string_view>

namespace Kerovane::Host {

/// The most bytes of a meaning, so that help lines, which start with the option's name, stay within
/// 100 columns.
constexpr std::size_t kLongestMeaning = 69;

/**
 * Returns what a parameter of Tesselune does to the picture, with its unit and what its limits
 * mean: a sentence without a full stop. Returns an empty text for parameters of other effects. A
 * parameter is recognized by its shown name and disk id.
 */
std::string_view MeaningOf(const Parameter& parameter);

/// Returns the unit that the effect declares, or else the one known for Tesselune's parameter
/// ("pixels"). Empty if there is neither.
std::string_view UnitOf(const Parameter& parameter);

} // namespace Kerovane::Host
