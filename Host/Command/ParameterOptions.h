#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterSettings.h"

#include <CLI/App.hpp>

#include <string>
#include <vector>

namespace Kerovane::Host {

/// The heading of these options in the help.
inline constexpr const char* kParameterGroup = "Parameters of the effect";

/**
 * The option of each parameter, by index, the same in all commands of the line that `command` is
 * part of. A parameter never has the name of an option that the line or a command has itself.
 */
std::vector<std::string> OptionNamesIn(const CLI::App& command,
                                       const std::vector<Parameter>& parameters);

/** Options of the command line that are made from an effect's parameters. */
class ParameterOptions {
public:
    /// Adds them to `command`, which together with `parameters` outlives this object. The commands
    /// of the line have their own options already.
    void addTo(CLI::App& command, const std::vector<Parameter>& parameters);

    /// By index, without hyphens, as OptionNamesIn gives them.
    const std::vector<std::string>& names() const { return mNames; }

    /// What was given, once the line is parsed: values or keys over frames. Throws Error if one
    /// can't be set.
    ParameterSettings settings() const;

private:
    struct ParameterOption {
        const Parameter* parameter;
        const CLI::Option* option;
    };

    std::vector<std::string> mNames;
    std::vector<ParameterOption> mOptions;
};

} // namespace Kerovane::Host
