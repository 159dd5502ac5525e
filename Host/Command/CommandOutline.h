#pragma once

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
    std::vector<std::string> words; ///< that can be its value, as far as they can be listed
};

/** What can be typed after a command: the source of its completion. */
struct CommandOutline {
    std::string name;
    std::string description;
    std::vector<OutlineOption> options{}; ///< without those that are options of every command
    std::vector<OutlineOption> arguments{};
    std::vector<CommandOutline> commands{};
};

/// The outline of `app`, whose options tell by their types (ValueTypes.h) what they take.
CommandOutline Outline(const CLI::App& app);

} // namespace Kerovane::Host
