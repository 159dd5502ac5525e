#pragma once

#include <CLI/App.hpp>

namespace Kerovane::Host {

/// Parses the line into `app`'s options. Throws Error where it is wrong, CLI::Success where help or
/// version is asked for.
void ParseLine(CLI::App& app, int argc, const char* const* argv);

} // namespace Kerovane::Host
