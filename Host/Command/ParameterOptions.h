#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterSettings.h"

#include <CLI/App.hpp>

#include <string>
#include <vector>

namespace Kerovane::Host {

/// The heading of the parameter options in the help.
inline constexpr const char* kParameterGroup = "Parameters of the effect";

/**
 * Returns the name of each parameter's option, by index. A name is the same in all subcommands of
 * the program that `command` belongs to, and differs from all other options of the program.
 */
std::vector<std::string> OptionNamesIn(const CLI::App& command,
                                       const std::vector<Parameter>& parameters);

/** The command-line options of an effect's parameters. */
class ParameterOptions {
public:
    /// Adds the options to `command`. `command` and `parameters` must outlive this object. All
    /// other options of the program must have been added before.
    void addTo(CLI::App& command, const std::vector<Parameter>& parameters);

    /// The options' names by parameter index, as OptionNamesIn returns them: "size-level".
    const std::vector<std::string>& names() const { return mNames; }

    /// Returns the values and keys given on the line. Call after parsing. Throws Error if a
    /// value is not accepted.
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
