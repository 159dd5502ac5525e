#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterSettings.h"

#include <CLI/App.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/**
 * The option of each parameter, by index, without its hyphens: the typed name, with the disk id
 * behind it where the command or an earlier parameter has that name already. Empty for parameters
 * without a value.
 */
std::vector<std::string> OptionNames(const std::vector<Parameter>& parameters);

/// The index of the parameter that a user calls `name`: its option, its shown name or its disk id.
/// Throws Error where there is none.
std::size_t IndexOfParameter(const std::vector<Parameter>& parameters, std::string_view name);

/** Options of the command line that are made from an effect's parameters. */
class ParameterOptions {
public:
    /// Adds them to `command`, which together with `parameters` outlives this object.
    void addTo(CLI::App& command, const std::vector<Parameter>& parameters);

    /// What was given, once the line is parsed: values or keys over frames. Throws Error where one
    /// can't be set.
    ParameterSettings settings() const;

    /// The same in time, at 24 frames a second.
    ParameterValues values() const { return ValuesOverTime(settings(), FrameRate()); }

private:
    struct ParameterOption {
        const Parameter* parameter;
        const CLI::Option* option;
    };

    std::vector<ParameterOption> mOptions;
};

} // namespace Kerovane::Host
