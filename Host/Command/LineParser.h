#pragma once

#include <CLI/App.hpp>

#include <span>

namespace Kerovane::Host {

/**
 * Parses `line`, whose first word is the program's name, and runs the subcommand that it names.
 * Throws Error if the line is wrong, and CLI::Success if it asks for help or the version. Rethrows
 * what the subcommand throws.
 */
void ParseLine(CLI::App& app, std::span<const char* const> line);

} // namespace Kerovane::Host
