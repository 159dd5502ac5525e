#pragma once

#include "Host/Command/ParameterOptions.h"
#include "Host/Effect.h"

#include <CLI/App.hpp>

#include <filesystem>

namespace Kerovane::Host {

/** `tesselune render IN OUT`: one picture through the effect. */
class RenderCommand {
public:
    /// Adds the arguments to `command`; those of the effect's parameters need the effect.
    void addTo(CLI::App& command);
    void addParametersTo(CLI::App& command, const Effect& effect);

    /// Throws Error where it fails; no file is left behind then.
    void run(Effect& effect) const;

private:
    std::filesystem::path mIn;
    std::filesystem::path mOut;
    int mDepth = 0; ///< 0: that of the file
    A_long mDownsample = 1;
    ParameterOptions mParameters;
};

} // namespace Kerovane::Host
