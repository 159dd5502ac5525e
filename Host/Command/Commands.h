#pragma once

#include "Host/Command/CommandContext.h"

#include <CLI/App.hpp>

#include <string>
#include <vector>

namespace Kerovane::Host {

/** One of the program's commands. */
struct Command {
    std::string name;
    std::string description;

    /// Adds the command's options to its part of the parser, and the callback that runs it once the
    /// line is parsed. The context outlives the parser.
    void (*setUp)(CLI::App& command, CommandContext& context);
};

/** Makes a command one of the program's. Its file has one such object, and nothing else names it.
 */
class CommandRegistration {
public:
    explicit CommandRegistration(Command command);
};

/// All commands that were registered, in the order of their names.
std::vector<Command> RegisteredCommands();

} // namespace Kerovane::Host
