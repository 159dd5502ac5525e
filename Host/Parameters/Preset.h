#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterSettings.h"
#include "Host/Parameters/Renderer.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// The content of a preset.
struct Preset {
    ParameterSettings settings;
    std::optional<Renderer> renderer{};
    /// Says how the preset looks, for lists of presets. FormatPreset does not write it.
    std::string description{};
};

/**
 * Returns all of an effect's parameters as JSON. Parameters that are not set have their defaults.
 * `version` is the effect's packed version. Keys are written as ParseKeyframes reads them.
 */
std::string FormatPreset(const std::vector<Parameter>& parameters, A_u_long version,
                         const Preset& preset);

/// Returns the JSON of FormatPreset on one line, for the metadata of rendered pictures.
std::string FormatRecord(const std::vector<Parameter>& parameters, A_u_long version,
                         const Preset& preset);

/**
 * Reads a preset. A parameter is found by its disk id or by its name; if both are given, they must
 * belong together. Values may be JSON values or text as on the command line. Throws Error if the
 * JSON is malformed or a value is not accepted. The text lists each wrong entry with its path:
 * "parameters[2].value takes a whole number from 2 to 3000, not '1'".
 */
Preset ParsePreset(const std::vector<Parameter>& parameters, std::string_view json);

} // namespace Kerovane::Host
