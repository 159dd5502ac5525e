#pragma once

#include <CLI/App.hpp>

#include <string>
#include <vector>

namespace Kerovane::Host {

/// An option or a positional argument of a command.
struct OutlineOption {
    std::string name; ///< such as "--size" or "IN"
    std::string description;
    bool takesValue = false;
    bool takesFile = false;
    std::vector<std::string> words; ///< possible values; empty if they cannot be listed
};

/** The options, arguments and subcommands of a command, from which completion scripts are made. */
struct CommandOutline {
    std::string name;
    std::string description;
    std::vector<OutlineOption> options{}; ///< a subcommand's list leaves out the program's options
    std::vector<OutlineOption> arguments{};
    std::vector<CommandOutline> commands{};
};

/// Returns the outline of `app`. The options' types (ValueTypes.h) tell which values they take.
CommandOutline Outline(const CLI::App& app);

} // namespace Kerovane::Host
