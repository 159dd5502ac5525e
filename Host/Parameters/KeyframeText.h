#pragma once

#include "Host/Parameters/Keyframes.h"
#include "Host/Parameters/Parameter.h"

#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// Returns the interpolations that a parameter allows, its default first. Empty if the parameter
/// cannot be animated.
std::vector<Interpolation> Interpolations(const Parameter& parameter);

/// Returns the names of Interpolations(), as ParseKeyframes reads them.
std::vector<std::string> InterpolationNames(const Parameter& parameter);

/**
 * Reads the text of a parameter's setting: one value, "24", or keys FRAME:VALUE with spaces
 * between, "1001:0 1050:100". Values are as ParseValue reads them.
 *
 * Interpolation to the next key is linear, or held if the parameter holds between keys. A third
 * field names another: "1001:0:smooth 1050:100", "1001:0:hold 1050:100". Keys may be placed at
 * seconds instead of frames if all of them are: "0s:0 2.5s:100". A single key means the same as its
 * value alone.
 *
 * Throws Error if a value is not accepted, the parameter cannot be animated in that way, or the
 * text is neither a value nor keys.
 */
Keyframes ParseKeyframes(const Parameter& parameter, std::string_view text);

/// Returns the text that ParseKeyframes reads back as exactly `keyframes`.
std::string FormatKeyframes(const Parameter& parameter, const Keyframes& keyframes);

} // namespace Kerovane::Host
