#pragma once

#include <CLI/App.hpp>

#include <vector>

namespace Kerovane::Host {

/// Returns all subcommands of `app`, in the order in which they were added.
inline std::vector<const CLI::App*> CommandsOf(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App*) { return true; });
}

} // namespace Kerovane::Host
