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
 * What the commands share: the streams, the options of every command, and the effect, which is
 * loaded when something first asks for it.
 */
class CommandContext {
public:
    /**
     * Looks ahead on `line`, whose first word is the program's, for the options of every command:
     * the effect's parameters become options too, so the effect is known before the line is parsed.
     * `streams` outlives the context.
     */
    CommandContext(std::span<const char* const> line, StandardStreams& streams);

    /// Adds the options of every command.
    void addTo(CLI::App& app);

    StandardStreams& streams() const { return mStreams; }
    /// Whether another effect than the installed one was asked for.
    bool hasForeignEffect() const { return mHasForeignEffect; }

    /// The words that ask for it; none for the installed one.
    std::vector<std::string> effectWords() const;

    bool isVerbose() const { return mVerbose; }

    /// Throws Error if the effect can't be loaded or set up.
    FrameRenderer& renderer();

    /// Has the effect's parameters added to `command` as `options` before the parser gets to its
    /// options. Both outlive the context's last use.
    void addParametersTo(CLI::App& command, ParameterOptions& options);

    /// Adds them to all commands at once.
    void addAllParameters();

    int exitStatus = 0; ///< of the process, if the command doesn't throw

private:
    StandardStreams& mStreams;
    EffectModules mModules;
    bool mHasForeignEffect = false;
    bool mVerbose = false;
    std::optional<FrameRenderer> mRenderer;
    std::vector<std::pair<CLI::App*, ParameterOptions*>> mParameterOptions;
};

} // namespace Kerovane::Host
