#pragma once

#include "Host/Parameters/Keyframes.h"
#include "Host/Parameters/Parameter.h"

#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// The ways that a parameter can go from key to key, the one that is meant by no word first; empty
/// if it can't be animated.
std::vector<Interpolation> Interpolations(const Parameter& parameter);

/// Their names, as ParseKeyframes reads them.
std::vector<std::string> InterpolationNames(const Parameter& parameter);

/**
 * Reads what a parameter is set to: one value, "24", or keys FRAME:VALUE with blanks between,
 * "1001:0 1050:100". The way from a key to the next is linear, or held if the parameter holds
 * between keys; a third field says otherwise: "1001:0:smooth 1050:100", "1001:0:hold 1050:100".
 * Keys may all stand at seconds instead of frames: "0s:0 2.5s:100".
 * Values are as ParseValue reads them. A single key is the same as its value alone.
 *
 * Throws Error if a value can't be set, the parameter can't be animated in that way or the text
 * is none of both.
 */
Keyframes ParseKeyframes(const Parameter& parameter, std::string_view text);

/// The text that ParseKeyframes reads as `keyframes`, to the last bit.
std::string FormatKeyframes(const Parameter& parameter, const Keyframes& keyframes);

} // namespace Kerovane::Host
