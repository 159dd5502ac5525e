#pragma once

#include "Host/Command/ParameterOptions.h"
#include "Host/Command/SheetPlan.h"
#include "Host/Session/Effect.h"

#include <CLI/App.hpp>

#include <filesystem>
#include <string>
#include <vector>

namespace Kerovane::Host {

/** `tesselune sheet IN OUT`: one picture under many settings, on one page. */
class SheetCommand {
public:
    /// Adds the arguments to `command`; those of the effect's parameters need the effect.
    void addTo(CLI::App& command);
    void addParametersTo(CLI::App& command, const Effect& effect);

    /// Throws Error where it fails; no file is left behind then.
    void run(Effect& effect) const;

private:
    SheetPlan plan(const Effect& effect, const ParameterValues& fixed) const;

    std::filesystem::path mIn;
    std::filesystem::path mOut;
    std::vector<std::string> mVary;
    A_long mWidth = 320; ///< of a cell's picture, in pixels
    ParameterOptions mParameters;
};

} // namespace Kerovane::Host
