#pragma once

#include "Host/Parameters/Parameter.h"

#include <CLI/App.hpp>

#include <string>
#include <vector>

namespace Kerovane::Host {

/// An option or an argument of a command.
struct OutlineOption {
    std::string name; ///< "--size", "IN"
    std::string description;
    bool takesValue = false;
    bool takesFile = false;
    bool isParameter = false;         ///< made from a parameter of the effect
    std::vector<std::string> words{}; ///< that can be its value, as far as they can be listed
};

/** What can be typed after a command: the one source of its completion and of its manual page. */
struct CommandOutline {
    std::string name;
    std::string description;
    std::string example;
    std::vector<OutlineOption> options{}; ///< without those that are options of every command
    std::vector<OutlineOption> arguments{};
    std::vector<CommandOutline> commands{};
};

/// The outline of `app`, whose options are made from `parameters` where they bear their names.
CommandOutline Outline(const CLI::App& app, const std::vector<Parameter>& parameters);

} // namespace Kerovane::Host
