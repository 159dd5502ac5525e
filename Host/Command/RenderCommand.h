#pragma once

#include "Host/Command/ParameterOptions.h"
#include "Host/Command/PresetOptions.h"
#include "Host/Command/ShotOptions.h"
#include "Host/Command/StandardStreams.h"
#include "Host/Session/Effect.h"

#include <CLI/App.hpp>

#include <filesystem>

namespace Kerovane::Host {

/** `tesselune render IN OUT`: a picture or the frames of a shot through the effect. */
class RenderCommand {
public:
    /// Adds the arguments to `command`; those of the effect's parameters need the effect.
    void addTo(CLI::App& command);
    void addParametersTo(CLI::App& command, const Effect& effect);

    /**
     * Returns the process's exit status: 0 all done, 2 some frames failed, 130 interrupted. Throws
     * Error where the line asks for what can't be, or the one picture fails; no file is left behind
     * then.
     */
    int run(Effect& effect, StandardStreams& streams, bool verbose) const;

private:
    ParameterSettings settings(const Effect& effect) const;

    std::filesystem::path mIn;
    std::filesystem::path mOut;
    A_long mDownsample = 1;
    std::filesystem::path mJsonLog; ///< empty: none
    bool mQuiet = false;
    ShotOptions mShot;
    PresetOptions mPreset;
    ParameterOptions mParameters;
};

} // namespace Kerovane::Host
