#pragma once

#include "Host/Parameter.h"
#include "Host/ParameterValues.h"

#include <CLI/App.hpp>

#include <string>
#include <vector>

namespace Kerovane::Host {

/**
 * The option of each parameter, by index, without its hyphens: the typed name, with the disk id
 * behind it where the command or an earlier parameter has that name already. Empty for parameters
 * without a value.
 */
std::vector<std::string> OptionNames(const std::vector<Parameter>& parameters);

/** Options of the command line that are made from an effect's parameters. */
class ParameterOptions {
public:
    /// Adds them to `command`, which together with `parameters` outlives this object.
    void addTo(CLI::App& command, const std::vector<Parameter>& parameters);

    /// What was given, once the line is parsed. Throws Error where a value can't be set.
    ParameterValues values() const;

private:
    struct ParameterOption {
        const Parameter* parameter;
        const CLI::Option* option;
    };

    std::vector<ParameterOption> mOptions;
};

} // namespace Kerovane::Host
