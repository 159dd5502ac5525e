#include "FaultyHost.h"

#include <string_view>

namespace Kerovane::TestSupport {

namespace {

/// The callbacks carry no reference to it.
FaultyHost* mHost = nullptr;

} // namespace

struct FaultyHost::Callbacks {
    static const PF_InteractCallbacks& interaction() { return mHost->mInteraction; }

    template <typename Suite>
    static const Suite& original(const char* name, int version) {
        const void* suite = nullptr;
        mHost->mBasicSuite->AcquireSuite(name, version, &suite);
        mHost->mBasicSuite->ReleaseSuite(name, version);
        return *static_cast<const Suite*>(suite);
    }

    static PF_Err addParam(PF_ProgPtr effect, PF_ParamIndex index, PF_ParamDef* param) {
        return mHost->fails(HostCall::AddParam) ? kError
                                                : interaction().add_param(effect, index, param);
    }

    static PF_Err checkoutParam(PF_ProgPtr effect, PF_ParamIndex index, A_long time, A_long step,
                                A_u_long scale, PF_ParamDef* param) {
        if (mHost->fails(HostCall::CheckoutParam)) {
            return kError;
        }
        const PF_Err err = interaction().checkout_param(effect, index, time, step, scale, param);
        if (mHost->mDistortion) {
            mHost->mDistortion(*param);
        }
        return err;
    }

    /// The host takes the parameter back all the same.
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

    static PF_Handle newHandle(A_HandleSize size) {
        return mHost->fails(HostCall::NewHandle)
                   ? nullptr
                   : original<PF_HandleSuite1>("PF Handle Suite", 2).host_new_handle(size);
    }

    static void* lockHandle(PF_Handle handle) {
        return mHost->fails(HostCall::LockHandle)
                   ? nullptr
                   : original<PF_HandleSuite1>("PF Handle Suite", 2).host_lock_handle(handle);
    }

    static SPErr acquireSuite(const A_char* name, A_long version, const void** suite) {
        if (mHost->fails(HostCall::AcquireSuite) || mHost->mRefusedSuite == name) {
            return kError;
        }
        const SPErr err = mHost->mBasicSuite->AcquireSuite(name, version, suite);
        const std::string_view suiteName = name;
        if (suiteName == "PF World Suite") {
            *suite = &mHost->mWorldSuite;
        } else if (suiteName == "PF iterateFloat Suite") {
            *suite = &mHost->mIterateSuite;
        } else if (suiteName == "PF Handle Suite") {
            *suite = &mHost->mHandleSuite;
        }
        return err;
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
    inData.utils = &mFaultyUtilities;
    mFaultyBasicSuite.AcquireSuite = Callbacks::acquireSuite;
    inData.pica_basicP = &mFaultyBasicSuite;

    mWorldSuite = Callbacks::original<PF_WorldSuite2>("PF World Suite", 2);
    mWorldSuite.PF_GetPixelFormat = Callbacks::getPixelFormat;
    mIterateSuite.iterate = Callbacks::iterate;
    mHandleSuite = Callbacks::original<PF_HandleSuite1>("PF Handle Suite", 2);
    mHandleSuite.host_new_handle = Callbacks::newHandle;
    mHandleSuite.host_lock_handle = Callbacks::lockHandle;
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
