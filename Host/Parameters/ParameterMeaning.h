#pragma once

#include "Host/Parameters/Parameter.h"

#include <cstddef>
#include <string_view>

namespace Kerovane::Host {

/// The most bytes of a meaning: behind the options' names it ends within 100 columns of help.
constexpr std::size_t kLongestMeaning = 69;

/**
 * What a parameter of Tesselune does to the picture, with its unit and what its ends stand for: a
 * sentence without its full stop. Empty for parameters of other effects, which are told apart by
 * shown name and disk id.
 */
std::string_view MeaningOf(const Parameter& parameter);

/// The unit that the effect declares, or else the one that is known: "pixels"; empty if none is.
std::string_view UnitOf(const Parameter& parameter);

} // namespace Kerovane::Host
