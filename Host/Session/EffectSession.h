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

/// The number of resources that the effect holds and has not returned.
struct LiveCounts {
    int suites = 0;        ///< references to suites, in the whole process
    int handles = 0;       ///< handles of the utilities and the handle suite, in the whole process
    int memoryHandles = 0; ///< handles of the memory suite, in the whole process
    int checkouts = 0;     ///< parameters checked out in this session
    int worlds = 0;        ///< worlds made by the world suite, in the whole process

    bool operator==(const LiveCounts&) const = default;
};

/**
 * The host's side of a loaded effect: the records passed with every call, the callbacks they
 * contain, and the parameters that the effect adds. It sends only the commands it is told to;
 * Effect sends them in the required order. Not thread-safe: one command at a time.
 */
class EffectSession {
public:
    /// Throws Error if the module can't be loaded.
    explicit EffectSession(const std::filesystem::path& module);
    EffectSession(const EffectSession&) = delete;
    EffectSession& operator=(const EffectSession&) = delete;

    /**
     * Sends one command and returns the effect's result. The records are left as they are, except
     * that PF_Cmd_PARAMS_SETUP first clears the parameter list. Exceptions from the effect
     * propagate.
     */
    PF_Err call(PF_Cmd command, PF_ParamDef** params = nullptr, PF_LayerDef* output = nullptr);

    /// Sends PF_Cmd_RENDER with all parameters, the input layer first, at inData()'s current time.
    PF_Err render(const PF_LayerDef& input, PF_LayerDef& output);
    PF_Err render(const World& input, World& output) {
        return render(input.layer(), output.layer());
    }

    /// The records that the next call passes to the effect. Callers may replace the callbacks and
    /// the basic suite in the records.
    PF_InData& inData() { return mInData; }
    PF_OutData& outData() { return mOutData; }
    const PF_OutData& outData() const { return mOutData; }

    /// The parameters by index; the input layer is the first.
    const std::vector<Parameter>& parameters() const { return mParameters; }

    /// The values that checkout_param returns.
    ParameterValues& values() { return mValues; }

    LiveCounts liveCounts() const;

    /// The reason why a callback last refused a request during the current call; empty if none did.
    const std::string& refusal() const { return mRefusal; }

private:
    friend struct EffectCallbacks;

    /// Returns the parameter at `index`, which must be in range, with its value at `time`.
    PF_ParamDef definitionAt(std::size_t index, Time time) const;

    EffectModule mModule;
    std::vector<Parameter> mParameters;
    ParameterValues mValues;
    PF_UtilCallbacks mUtilities;
    PF_InData mInData{};
    PF_OutData mOutData{};
    PF_LayerDef mInput{}; ///< the input layer of the last render
    int mCheckouts = 0;
    std::string mRefusal;
};

} // namespace Kerovane::Host
