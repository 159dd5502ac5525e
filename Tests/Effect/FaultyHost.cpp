#include "Tests/Effect/FaultyHost.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace Kerovane::TestSupport {

namespace {

/// Global, because the callbacks have no argument that refers to the host.
FaultyHost* mHost = nullptr;

} // namespace

const char* NameOf(HostCall call) {
    constexpr std::array<const char*, static_cast<std::size_t>(HostCall::Count)> kNames = {
        "acquiring a suite", "releasing a suite",
        "registering",       "formatting a text",
        "copying a text",    "adding a parameter",
        "a checkout",        "a check-in",
        "8-bit pixels",      "16-bit pixels",
        "the pixel format",  "an iteration",
        "a new handle",      "a lock"};
    return kNames[static_cast<std::size_t>(call)];
}

struct FaultyHost::Callbacks {
    static const PF_InteractCallbacks& interaction() { return mHost->mInteraction; }

    template <typename Suite>
    static const Suite& original(const char* name, int version) {
        const void* suite = nullptr;
        mHost->mBasicSuite->AcquireSuite(name, version, &suite);
        mHost->mBasicSuite->ReleaseSuite(name, version);
        return *static_cast<const Suite*>(suite);
    }

    static A_Err registerPlugin(AEGP_GlobalRefcon refcon, const A_char* name, AEGP_PluginID* id) {
        return mHost->fails(HostCall::Register)
                   ? kError
                   : original<AEGP_UtilitySuite6>("AEGP Utility Suite", 13)
                         .AEGP_RegisterWithAEGP(refcon, name, id);
    }

    /// NOLINTNEXTLINE(cert-dcl50-cpp): the interface requires it
    static A_long formatText(A_char* text, const A_char* format, ...) {
        if (mHost->fails(HostCall::FormatText)) {
            return -1;
        }
        std::va_list arguments;
        va_start(arguments, format);
        const int length = std::vsnprintf(text, PF_MAX_EFFECT_MSG_LEN, format, arguments);
        va_end(arguments);
        return length;
    }

    static A_char* copyText(A_char* destination, const A_char* source) {
        return mHost->fails(HostCall::CopyText)
                   ? nullptr
                   : mHost->mUtilities->ansi.strcpy(destination, source);
    }

    static PF_Err addParam(PF_ProgPtr effect, PF_ParamIndex index, PF_ParamDef* param) {
        return mHost->fails(HostCall::AddParam) ? kError
                                                : interaction().add_param(effect, index, param);
    }

    static PF_Err checkoutParam(PF_ProgPtr effect, PF_ParamIndex index, A_long time, A_long step,
                                A_u_long scale, PF_ParamDef* param) {
        if (mHost->fails(HostCall::CheckoutParam)) {
            std::memset(param, kRecordContent, sizeof(*param));
            return kError;
        }
        const PF_Err err = interaction().checkout_param(effect, index, time, step, scale, param);
        if (mHost->mDistortion) {
            mHost->mDistortion(*param);
        }
        return err;
    }

    /// Checks the parameter in even if the call is to fail.
    static PF_Err checkinParam(PF_ProgPtr effect, PF_ParamDef* param) {
        const PF_Err err = interaction().checkin_param(effect, param);
        return mHost->fails(HostCall::CheckinParam) ? kError : err;
    }

    static PF_Err getPixelData8(PF_EffectWorld* world, PF_PixelPtr pixels, PF_Pixel8** out) {
        return mHost->fails(HostCall::GetPixelData8)
                   ? kError
                   : mHost->mUtilities->get_pixel_data8(world, pixels, out);
    }

    static PF_Err getPixelData16(PF_EffectWorld* world, PF_PixelPtr pixels, PF_Pixel16** out) {
        return mHost->fails(HostCall::GetPixelData16)
                   ? kError
                   : mHost->mUtilities->get_pixel_data16(world, pixels, out);
    }

    static PF_Err getPixelFormat(const PF_EffectWorld* world, PF_PixelFormat* format) {
        if (mHost->fails(HostCall::GetPixelFormat)) {
            return kError;
        }
        if (mHost->mReportedFormat) {
            *format = *mHost->mReportedFormat;
            return PF_Err_NONE;
        }
        return original<PF_WorldSuite2>("PF World Suite", 2).PF_GetPixelFormat(world, format);
    }

    static PF_Err iterate(PF_InData* in_data, A_long base, A_long final, PF_EffectWorld* source,
                          const PF_Rect* area, void* refcon, PF_IteratePixelFloatFunc function,
                          PF_EffectWorld* destination) {
        return mHost->fails(HostCall::Iterate)
                   ? kError
                   : original<PF_iterateFloatSuite1>("PF iterateFloat Suite", 1)
                         .iterate(in_data, base, final, source, area, refcon, function,
                                  destination);
    }

    static const PF_HandleSuite1& handles() {
        return original<PF_HandleSuite1>("PF Handle Suite", 2);
    }

    static PF_Handle newHandle(A_HandleSize size) {
        if (mHost->fails(HostCall::NewHandle)) {
            return nullptr;
        }
        PF_Handle handle = handles().host_new_handle(size);
        if (handle != nullptr) {
            std::memset(*handle, kHandleContent, size);
        }
        return handle;
    }

    static void* lockHandle(PF_Handle handle) {
        if (mHost->fails(HostCall::LockHandle)) {
            return nullptr;
        }
        ++mHost->mLockedHandles;
        return handles().host_lock_handle(handle);
    }

    static void unlockHandle(PF_Handle handle) {
        --mHost->mLockedHandles;
        handles().host_unlock_handle(handle);
    }

    static SPErr acquireSuite(const A_char* name, A_long version, const void** suite) {
        if (mHost->fails(HostCall::AcquireSuite) || mHost->mRefusedSuite == name) {
            return kError;
        }
        const SPErr err = mHost->mBasicSuite->AcquireSuite(name, version, suite);
        const struct {
            std::string_view name;
            const void* table;
        } kTables[] = {
            {"AEGP Utility Suite", &mHost->mUtilitySuite},
            {"PF ANSI Suite", &mHost->mAnsiSuite},
            {"PF Handle Suite", &mHost->mHandleSuite},
            {"PF World Suite", &mHost->mWorldSuite},
            {"PF iterateFloat Suite", &mHost->mIterateSuite},
        };
        for (const auto& [faultyName, table] : kTables) {
            if (err == kSPNoError && faultyName == name) {
                *suite = table;
            }
        }
        return err;
    }

    /// Releases the suite even if the call is to fail.
    static SPErr releaseSuite(const A_char* name, A_long version) {
        const SPErr err = mHost->mBasicSuite->ReleaseSuite(name, version);
        return mHost->fails(HostCall::ReleaseSuite) ? kError : err;
    }
};

FaultyHost::FaultyHost(Host::EffectSession& session)
    : mSession(session),
      mInteraction(session.inData().inter),
      mUtilities(session.inData().utils),
      mBasicSuite(session.inData().pica_basicP),
      mFaultyUtilities(*mUtilities),
      mFaultyBasicSuite(*mBasicSuite) {
    mHost = this;
    PF_InData& inData = session.inData();
    inData.inter.add_param = Callbacks::addParam;
    inData.inter.checkout_param = Callbacks::checkoutParam;
    inData.inter.checkin_param = Callbacks::checkinParam;
    mFaultyUtilities.get_pixel_data8 = Callbacks::getPixelData8;
    mFaultyUtilities.get_pixel_data16 = Callbacks::getPixelData16;
    mFaultyUtilities.ansi.strcpy = Callbacks::copyText;
    inData.utils = &mFaultyUtilities;
    mFaultyBasicSuite = {Callbacks::acquireSuite, Callbacks::releaseSuite};
    inData.pica_basicP = &mFaultyBasicSuite;

    mAnsiSuite.sprintf = Callbacks::formatText;
    mUtilitySuite.AEGP_RegisterWithAEGP = Callbacks::registerPlugin;
    mWorldSuite = Callbacks::original<PF_WorldSuite2>("PF World Suite", 2);
    mWorldSuite.PF_GetPixelFormat = Callbacks::getPixelFormat;
    mIterateSuite.iterate = Callbacks::iterate;
    mHandleSuite = Callbacks::handles();
    mHandleSuite.host_new_handle = Callbacks::newHandle;
    mHandleSuite.host_lock_handle = Callbacks::lockHandle;
    mHandleSuite.host_unlock_handle = Callbacks::unlockHandle;
}

FaultyHost::~FaultyHost() {
    mSession.inData().inter = mInteraction;
    mSession.inData().utils = mUtilities;
    mSession.inData().pica_basicP = mBasicSuite;
    mHost = nullptr;
}

void FaultyHost::fail(HostCall call, int nth) {
    mCalls = {};
    mFaultyCall = call;
    mNth = nth;
}

void FaultyHost::recover() {
    fail(HostCall::Count, 0);
    mRefusedSuite.clear();
    mReportedFormat.reset();
    mDistortion = nullptr;
}

bool FaultyHost::fails(HostCall call) {
    const int nth = ++mCalls[static_cast<std::size_t>(call)];
    return call == mFaultyCall && nth == mNth;
}

} // namespace Kerovane::TestSupport
