#pragma once

#include "AE_Effect.h"
#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterValues.h"
#include "Host/Session/EffectModule.h"
#include "Host/Session/World.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// What the effect has of the host's and has not given back.
struct LiveCounts {
    int suites = 0;        ///< references to suites, in the whole process
    int handles = 0;       ///< of utilities and handle suite, in the whole process
    int memoryHandles = 0; ///< of the memory suite, in the whole process
    int checkouts = 0;     ///< parameters checked out of this session
    int worlds = 0;        ///< made by the world suite, in the whole process

    bool operator==(const LiveCounts&) const = default;
};

/**
 * The host's side of a loaded effect: the records that pass with every call, the callbacks behind
 * them, and the parameters that the effect adds. It sends any command and none by itself; Effect
 * sends them in the order of a life. One command at a time.
 */
class EffectSession {
public:
    /// Throws Error if the module can't be loaded.
    explicit EffectSession(const std::filesystem::path& module);
    EffectSession(const EffectSession&) = delete;
    EffectSession& operator=(const EffectSession&) = delete;

    /**
     * Sends one command and returns the effect's answer. Nothing in the records is changed before
     * or after; only the parameter list starts anew with PF_Cmd_PARAMS_SETUP. What the effect
     * throws passes through.
     */
    PF_Err call(PF_Cmd command, PF_ParamDef** params = nullptr, PF_LayerDef* output = nullptr);

    /// Sends PF_Cmd_RENDER with the parameter list at inData()'s current time, the input layer
    /// first.
    PF_Err render(const PF_LayerDef& input, PF_LayerDef& output);
    PF_Err render(const World& input, World& output) {
        return render(input.layer(), output.layer());
    }

    /// The records of the next call. Callbacks and the basic suite in them may be replaced.
    PF_InData& inData() { return mInData; }
    PF_OutData& outData() { return mOutData; }
    const PF_OutData& outData() const { return mOutData; }

    /// By index, the input layer first.
    const std::vector<Parameter>& parameters() const { return mParameters; }

    /// What checkout_param answers with.
    ParameterValues& values() { return mValues; }

    LiveCounts liveCounts() const;

    /// Why a callback last refused something of the effect, since the call began; else empty.
    const std::string& refusal() const { return mRefusal; }

private:
    friend struct EffectCallbacks;

    /// The parameter at `index` as checked out at a time; `index` is in range.
    PF_ParamDef definitionAt(std::size_t index, Time time) const;

    EffectModule mModule;
    std::vector<Parameter> mParameters;
    ParameterValues mValues;
    PF_UtilCallbacks mUtilities;
    PF_InData mInData{};
    PF_OutData mOutData{};
    PF_LayerDef mInput{}; ///< of the last render
    int mCheckouts = 0;
    std::string mRefusal;
};

} // namespace Kerovane::Host
