#pragma once

#include <CLI/App.hpp>

#include <span>

namespace Kerovane::Host {

/**
 * Parses `line`, whose first word is the program's, into `app`'s options and runs the command that
 * it names. Throws Error if the line is wrong, CLI::Success if it asks for help or version, and
 * what the command throws.
 */
void ParseLine(CLI::App& app, std::span<const char* const> line);

} // namespace Kerovane::Host
