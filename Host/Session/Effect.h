#pragma once

#include "Host/Parameters/Time.h"
#include "Host/Session/EffectSession.h"

#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// What a frame has beside its pixels and parameter values.
struct Frame {
    Time time;
    A_long timeStep = 1;   ///< ticks of a frame
    A_long downsample = 1; ///< the pixels are reduced so many times
};

/**
 * An effect that is set up and renders: the module is loaded and set up by the constructor, set
 * down and unloaded by the destructor. One for a module in a process; the instances that a user
 * sees differ by the ParameterValues that they render with. Threads may share it: its operations
 * run one after another, as effects of this kind want it.
 *
 * Operations throw Error if the effect returns an error or asks to display one.
 */
class Effect {
public:
    explicit Effect(const std::filesystem::path& module);

    /// By index, the input layer first.
    const std::vector<Parameter>& parameters() const { return mSession.parameters(); }

    /// As the effect packed it; AE_Effect.h has the macros that unpack it.
    A_u_long version() const { return mSession.outData().my_version; }

    /// The effect's about text, its lines separated by '\n'.
    std::string about();

    /// `output` has the depth and the size of `input`. If rendering fails it may be written in
    /// part.
    void render(const Frame& frame, const ParameterValues& values, const PF_LayerDef& input,
                PF_LayerDef& output);
    void render(const Frame& frame, const ParameterValues& values, const World& input,
                World& output) {
        render(frame, values, input.layer(), output.layer());
    }

private:
    /// From PF_Cmd_GLOBAL_SETUP to PF_Cmd_GLOBAL_SETDOWN.
    class GlobalSetup {
    public:
        explicit GlobalSetup(EffectSession& session);
        ~GlobalSetup();
        GlobalSetup(const GlobalSetup&) = delete;
        GlobalSetup& operator=(const GlobalSetup&) = delete;

    private:
        EffectSession& mSession;
    };

    std::mutex mMutex;
    EffectSession mSession;
    GlobalSetup mGlobalSetup;
};

} // namespace Kerovane::Host
