#pragma once

#include "Host/Parameters/Time.h"
#include "Host/Session/EffectSession.h"

#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// The time of a frame and the scale of its pixels.
struct Frame {
    Time time;
    A_long timeStep = 1;   ///< duration of a frame, in ticks
    A_long downsample = 1; ///< the factor by which the pixels are already reduced
};

/**
 * An effect that is ready to render. The constructor loads the module and sets the effect up, the
 * destructor shuts it down and unloads the module. At most one Effect for each module may exist in
 * a process; instances of the effect differ only in the ParameterValues they render with.
 * Thread-safe: operations are serialized, as the effect requires.
 *
 * Operations throw Error if the effect returns an error or asks to display one.
 */
class Effect {
public:
    explicit Effect(const std::filesystem::path& module);

    /// The parameters by index; the input layer is the first.
    const std::vector<Parameter>& parameters() const { return mSession.parameters(); }

    /// The effect's packed version; AE_Effect.h has macros to unpack it.
    A_u_long version() const { return mSession.outData().my_version; }

    /// Returns the effect's about text, with lines separated by '\n'.
    std::string about();

    /// Renders `input` into `output`, which has the same depth and size. If rendering fails,
    /// `output` may be partly written.
    void render(const Frame& frame, const ParameterValues& values, const PF_LayerDef& input,
                PF_LayerDef& output);
    void render(const Frame& frame, const ParameterValues& values, const World& input,
                World& output) {
        render(frame, values, input.layer(), output.layer());
    }

private:
    /// Sends PF_Cmd_GLOBAL_SETUP when constructed and PF_Cmd_GLOBAL_SETDOWN when destroyed.
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
