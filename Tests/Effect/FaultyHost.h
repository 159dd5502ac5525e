#pragma once

#include "AE_EffectCBSuites.h"
#include "AE_GeneralPlug.h"
#include "Host/Session/EffectSession.h"
#include "SPBasic.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace Kerovane::TestSupport {

/// The host's calls that an effect makes and that can fail.
enum class HostCall {
    AcquireSuite,
    ReleaseSuite,
    Register,
    FormatText,
    CopyText,
    AddParam,
    CheckoutParam,
    CheckinParam,
    GetPixelData8,
    GetPixelData16,
    GetPixelFormat,
    Iterate,
    NewHandle,
    LockHandle,
    Count
};

const char* NameOf(HostCall call);

/// Calls of each kind.
using HostCallCounts = std::array<int, static_cast<std::size_t>(HostCall::Count)>;

/**
 * Puts itself between a session's host and the effect, and fails on demand. Handles that it gives
 * hold kHandleContent, the record of a failed checkout kRecordContent. One at a time.
 */
class FaultyHost {
public:
    static constexpr PF_Err kError = PF_Err_INTERNAL_STRUCT_DAMAGED;
    static constexpr int kHandleContent = 0x5a;
    static constexpr int kRecordContent = 0x40; ///< numbers well above 0 of every type

    explicit FaultyHost(Host::EffectSession& session);
    ~FaultyHost();
    FaultyHost(const FaultyHost&) = delete;
    FaultyHost& operator=(const FaultyHost&) = delete;

    /// Fails the `nth` call of that kind from now on, the first being 1, and no other.
    void fail(HostCall call, int nth);

    void refuseSuite(const std::string& name) { mRefusedSuite = name; }

    /// Reports `format` as that of every world.
    void reportFormat(PF_PixelFormat format) { mReportedFormat = format; }

    /// Changes what a checkout answers with.
    void distort(std::function<void(PF_ParamDef&)> change) { mDistortion = std::move(change); }

    /// Back to a host that does all it is asked for; the counts of calls start anew.
    void recover();

    int calls(HostCall call) const { return mCalls[static_cast<std::size_t>(call)]; }
    const HostCallCounts& calls() const { return mCalls; }

    /// Locks of handles less unlocks.
    int lockedHandles() const { return mLockedHandles; }

private:
    struct Callbacks;

    bool fails(HostCall call);

    Host::EffectSession& mSession;
    PF_InteractCallbacks mInteraction;
    PF_UtilCallbacks* mUtilities;
    SPBasicSuite* mBasicSuite;
    PF_UtilCallbacks mFaultyUtilities;
    SPBasicSuite mFaultyBasicSuite;
    PF_ANSICallbacksSuite1 mAnsiSuite{};
    AEGP_UtilitySuite6 mUtilitySuite{};
    PF_WorldSuite2 mWorldSuite{};
    PF_iterateFloatSuite1 mIterateSuite{};
    PF_HandleSuite1 mHandleSuite{};
    HostCallCounts mCalls{};
    int mLockedHandles = 0;
    HostCall mFaultyCall = HostCall::Count;
    int mNth = 0;
    std::string mRefusedSuite;
    std::optional<PF_PixelFormat> mReportedFormat;
    std::function<void(PF_ParamDef&)> mDistortion;
};

} // namespace Kerovane::TestSupport
