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

/// Calls to the host that can fail.
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

/// Numbers of calls by kind.
using HostCallCounts = std::array<int, static_cast<std::size_t>(HostCall::Count)>;

/**
 * Intercepts the calls between the effect and a session's host, and makes them fail on demand. New
 * handles are filled with kHandleContent, the record of a failed checkout with kRecordContent. Only
 * one may exist at a time.
 */
class FaultyHost {
public:
    static constexpr PF_Err kError = PF_Err_INTERNAL_STRUCT_DAMAGED;
    static constexpr int kHandleContent = 0x5a;
    static constexpr int kRecordContent = 0x40; ///< gives numbers well above 0 in every type

    explicit FaultyHost(Host::EffectSession& session);
    ~FaultyHost();
    FaultyHost(const FaultyHost&) = delete;
    FaultyHost& operator=(const FaultyHost&) = delete;

    /// Makes only the `nth` call of that kind from now on fail (1: the next).
    void fail(HostCall call, int nth);

    void refuseSuite(const std::string& name) { mRefusedSuite = name; }

    /// Reports `format` as the pixel format of every world.
    void reportFormat(PF_PixelFormat format) { mReportedFormat = format; }

    /// Applies `change` to the record of every checkout.
    void distort(std::function<void(PF_ParamDef&)> change) { mDistortion = std::move(change); }

    /// Makes all calls succeed again and resets their counts.
    void recover();

    int calls(HostCall call) const { return mCalls[static_cast<std::size_t>(call)]; }
    const HostCallCounts& calls() const { return mCalls; }

    /// Returns how many handles are locked.
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
