#pragma once

#include "Host/Command/CommandContext.h"

#include <CLI/App.hpp>

#include <string>
#include <vector>

namespace Kerovane::Host {

/** A subcommand of the program. */
struct Command {
    std::string name;
    std::string description;

    /// Adds the subcommand's options and its callback, which runs after the line is parsed. The
    /// context must outlive the parser.
    void (*setUp)(CLI::App& command, CommandContext& context);
};

/** Registers a subcommand. Each subcommand's file defines one such object. */
class CommandRegistration {
public:
    explicit CommandRegistration(Command command);
};

/// Returns all registered subcommands, sorted by name.
std::vector<Command> RegisteredCommands();

} // namespace Kerovane::Host
