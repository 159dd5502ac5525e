#include "EffectFixture.h"
#include "FaultyHost.h"
#include "Support/EglHost.h"
#include "Support/LiveGLObjects.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace Kerovane::TestSupport {

namespace {

using Host::Depth;

class Failures : public EffectFixture {
protected:
    static Host::World input(Depth depth) { return AtDepth(SmoothPicture(40, 30, true), depth); }

    /// The result of one frame, whose pixels are lost.
    PF_Err renderResult(const Host::World& input) {
        Host::World output(input.depth(), input.width(), input.height());
        return mSession.render(input, output);
    }
};

/// The host's calls in a frame, and what the frame's result is where one of them fails.
constexpr struct {
    const char* name;
    HostCall call;
    PF_Err result;
} kFrameCalls[] = {
    {"AcquireSuite", HostCall::AcquireSuite, PF_Err_BAD_CALLBACK_PARAM},
    {"Iterate", HostCall::Iterate, PF_Err_BAD_CALLBACK_PARAM},
    {"NewHandle", HostCall::NewHandle, PF_Err_BAD_CALLBACK_PARAM},
    {"LockHandle", HostCall::LockHandle, PF_Err_BAD_CALLBACK_PARAM},
    {"GetPixelFormat", HostCall::GetPixelFormat, PF_Err_NONE},
    {"GetPixelData8", HostCall::GetPixelData8, PF_Err_NONE},
    {"GetPixelData16", HostCall::GetPixelData16, PF_Err_NONE},
    {"CheckoutParam", HostCall::CheckoutParam, PF_Err_NONE},
    {"CheckinParam", HostCall::CheckinParam, PF_Err_NONE},
};

TEST_F(Failures, OfEveryHostCallEndAFrameWithNothingLeftBehind) {
    const EglHost hostContext;
    hostContext.makeCurrent();
    FaultyHost host(mSession);
    const LiveGLObjects live;
    for (const Depth depth : {Depth::Bits8, Depth::Bits16, Depth::Float32}) {
        const Host::World picture = input(depth);
        const Host::World expected = rendered(picture);
        const auto liveBefore = live.counts();
        const Host::LiveCounts countsBefore = mSession.liveCounts();
        for (const auto& [name, call, result] : kFrameCalls) {
            host.recover();
            EXPECT_TRUE(SamePixels(rendered(picture), expected));
            const int calls = host.calls(call);
            for (int nth = 1; nth <= calls; ++nth) {
                SCOPED_TRACE(testing::Message()
                             << name << " " << nth << " at " << static_cast<int>(depth) << " bits");
                host.fail(call, nth);
                EXPECT_EQ(renderResult(picture), result);
                EXPECT_EQ(Platform::CurrentEglBinding(), hostContext.binding());
                EXPECT_EQ(mSession.liveCounts(), countsBefore);
                auto liveAfter = live.counts();
                // A failed checkout may ask for a variant that no frame has asked for before.
                liveAfter["Programs"] = liveBefore.at("Programs");
                EXPECT_EQ(liveAfter, liveBefore);
                EXPECT_STREQ(mSession.outData().return_msg, "");
                EXPECT_EQ(mSession.outData().out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE, 0);
                host.recover();
                EXPECT_TRUE(SamePixels(rendered(picture), expected)) << "the next frame is wrong";
            }
        }
    }
}

TEST_F(Failures, OfACallThatADepthNeedsAreMet) {
    FaultyHost host(mSession);
    struct {
        Depth depth;
        int suites, pixels8, pixels16, iterations;
    } const kCases[] = {
        {Depth::Bits8, 2, 31, 0, 0}, {Depth::Bits16, 2, 0, 31, 0}, {Depth::Float32, 4, 0, 0, 2}};
    for (const auto& [depth, suites, pixels8, pixels16, iterations] : kCases) {
        host.recover();
        rendered(input(depth));
        EXPECT_EQ(host.calls(HostCall::AcquireSuite), suites);
        EXPECT_EQ(host.calls(HostCall::GetPixelData8), pixels8) << "one going in, one a row out";
        EXPECT_EQ(host.calls(HostCall::GetPixelData16), pixels16);
        EXPECT_EQ(host.calls(HostCall::Iterate), iterations);
        EXPECT_EQ(host.calls(HostCall::CheckoutParam), 13);
        EXPECT_EQ(host.calls(HostCall::CheckinParam), 13);
        EXPECT_EQ(host.calls(HostCall::NewHandle), 1);
    }
}

TEST_F(Failures, OfAPixelFormatThatIsNoneOfTheThreeLeaveTheOutputAlone) {
    FaultyHost host(mSession);
    const LiveGLObjects live;
    host.reportFormat(PF_PIXEL_FORMAT_CODE('r', 'g', 'b', 'a'));
    Host::World output(Depth::Bits8, 40, 30);
    EXPECT_EQ(mSession.render(input(Depth::Bits8), output), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_TRUE(SamePixels(output, Host::World(Depth::Bits8, 40, 30)));
    EXPECT_EQ(live.counts().count("Textures"), 0U);
    EXPECT_EQ(mSession.liveCounts(), Host::LiveCounts{});
}

TEST_F(Failures, OfTheSuitesOfGlobalCommandsGive516) {
    FaultyHost host(mSession);
    host.refuseSuite("PF ANSI Suite");
    EXPECT_EQ(mSession.call(PF_Cmd_ABOUT), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_STREQ(mSession.outData().return_msg, "");

    globalSetdown();
    mSession.outData() = {};
    host.refuseSuite("AEGP Utility Suite");
    EXPECT_EQ(mSession.call(PF_Cmd_GLOBAL_SETUP), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(mSession.outData().my_version, 0x80001U);
    EXPECT_EQ(mSession.outData().out_flags, 0x2008002);
    const Host::World picture = input(Depth::Bits8);
    EXPECT_EQ(renderResult(picture), PF_Err_BAD_CALLBACK_PARAM) << "there are no contexts";
    host.recover();
    globalSetup();
    EXPECT_EQ(mSession.liveCounts().suites, 0);
}

TEST_F(Failures, OfAParameterEndTheListThere) {
    FaultyHost host(mSession);
    for (const int nth : {1, 7, 15}) {
        host.fail(HostCall::AddParam, nth);
        mSession.outData().num_params = 0;
        EXPECT_EQ(mSession.call(PF_Cmd_PARAMS_SETUP), FaultyHost::kError);
        EXPECT_EQ(mSession.parameters().size(), static_cast<std::size_t>(nth));
        EXPECT_EQ(host.calls(HostCall::AddParam), nth);
        EXPECT_EQ(mSession.outData().num_params, 16);
    }
}

TEST_F(Failures, OfAHostToKeepItsRangesEndInAPicture) {
    FaultyHost host(mSession);
    set("Size Random", 100);
    const Host::World picture = input(Depth::Bits8);
    const Host::World expected = rendered(picture);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const A_long whole : {INT32_MIN, -1, 0, 6, 1000, INT32_MAX}) {
        for (const double ratio : {-kInfinity, -1.0, 0.0, 1e-300, 1e300, kInfinity, std::nan("")}) {
            for (const A_u_long denominator : {0U, 1U, 0xffffffffU}) {
                mSession.inData().downsample_x.den = denominator;
                host.distort([=](PF_ParamDef& param) {
                    switch (param.param_type) {
                    case PF_Param_SLIDER:
                        param.u.sd.value = whole;
                        break;
                    case PF_Param_FIX_SLIDER:
                        param.u.fd.value = whole;
                        break;
                    case PF_Param_ANGLE:
                        param.u.ad.value = whole;
                        break;
                    case PF_Param_POPUP:
                        param.u.pd.value = whole;
                        break;
                    case PF_Param_FLOAT_SLIDER:
                        param.u.fs_d.value = ratio;
                        break;
                    default:
                        break;
                    }
                });
                EXPECT_EQ(renderResult(picture), PF_Err_NONE);
            }
        }
    }
    host.recover();
    mSession.inData().downsample_x.den = 1;
    EXPECT_TRUE(SamePixels(rendered(picture), expected));
}

TEST_F(Failures, OfACheckoutSkipThoseBehindItAndCheckInAll) {
    FaultyHost host(mSession);
    const Host::World picture = input(Depth::Bits8);
    host.fail(HostCall::CheckoutParam, 4);
    EXPECT_EQ(renderResult(picture), PF_Err_NONE);
    EXPECT_EQ(host.calls(HostCall::CheckoutParam), 4);
    EXPECT_EQ(host.calls(HostCall::CheckinParam), 13);
    host.fail(HostCall::CheckinParam, 2);
    EXPECT_EQ(renderResult(picture), PF_Err_NONE);
    EXPECT_EQ(host.calls(HostCall::CheckoutParam), 2);
    EXPECT_EQ(host.calls(HostCall::CheckinParam), 13);
}

} // namespace

} // namespace Kerovane::TestSupport
