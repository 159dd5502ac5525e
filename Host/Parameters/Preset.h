#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterSettings.h"
#include "Host/Parameters/Renderer.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// What a preset sets.
struct Preset {
    ParameterSettings settings;
    std::optional<Renderer> renderer{};
    std::string description{}; ///< what it looks like, for lists; not written by FormatPreset
};

/**
 * All of an effect's parameters as JSON, those that are not set with their defaults. `version` is
 * the effect's, as it packed it. Keys over time have the form that ParseKeyframes reads.
 */
std::string FormatPreset(const std::vector<Parameter>& parameters, A_u_long version,
                         const Preset& preset);

/// The same in one line, for pictures to say what they were made with.
std::string FormatRecord(const std::vector<Parameter>& parameters, A_u_long version,
                         const Preset& preset);

/**
 * Reads what a preset sets. A parameter is found by its disk id, which must fit its name if both
 * are given, or by its name alone; values may be JSON's or text as on the command line. Throws
 * Error if it isn't well formed or sets what can't be set; the text names each such entry with
 * its place: "parameters[2].value takes a whole number from 2 to 3000, not '1'".
 */
Preset ParsePreset(const std::vector<Parameter>& parameters, std::string_view json);

} // namespace Kerovane::Host
