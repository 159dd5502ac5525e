#pragma once

#include "Host/Command/ParameterOptions.h"
#include "Host/Command/StandardStreams.h"
#include "Host/Frames/FrameRenderer.h"

#include <CLI/App.hpp>

#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace Kerovane::Host {

/**
 * State shared by the subcommands: the standard streams, the global options, and the effect, which
 * is loaded on first use.
 */
class CommandContext {
public:
    /**
     * Scans `line`, whose first word is the program's name, for the global options. They are needed
     * before the line is parsed, because the effect's parameters become options. `streams` must
     * outlive the context.
     */
    CommandContext(std::span<const char* const> line, StandardStreams& streams);

    /// Adds the global options.
    void addTo(CLI::App& app);

    StandardStreams& streams() const { return mStreams; }
    /// Returns whether another effect than the installed one was requested.
    bool hasForeignEffect() const { return mHasForeignEffect; }

    /// Returns the words of the line that request another effect; empty for the installed one.
    std::vector<std::string> effectWords() const;

    bool isVerbose() const { return mVerbose; }

    /// Loads the effect on the first call. Throws Error if it cannot be loaded or set up.
    FrameRenderer& renderer();

    /// Adds an option to `command` for each parameter of the effect, once the parser reaches that
    /// subcommand. `options` keeps these options and gives their values after parsing. Both
    /// arguments must outlive the context's last use.
    void addParametersTo(CLI::App& command, ParameterOptions& options);

    /// Adds the parameters at once to all commands that were passed to addParametersTo().
    void addAllParameters();

    int exitStatus = 0; ///< the process's exit status, unless the subcommand throws

private:
    StandardStreams& mStreams;
    EffectModules mModules;
    bool mHasForeignEffect = false;
    bool mVerbose = false;
    std::optional<FrameRenderer> mRenderer;
    std::vector<std::pair<CLI::App*, ParameterOptions*>> mParameterOptions;
};

} // namespace Kerovane::Host
