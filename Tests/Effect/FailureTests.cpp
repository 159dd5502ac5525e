#include "EffectFixture.h"
#include "FaultyHost.h"
#include "Support/EglHost.h"
#include "Support/LiveGLObjects.h"

#include <ostream>

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

TEST_F(Failures, OfTheHostEndAFrameWithNothingLeftBehind) {
    const PF_Err kRefused = PF_Err_BAD_CALLBACK_PARAM;
    struct Case {
        const char* name;
        Depth depth;
        HostCall call;
        int nth;
        PF_Err result;
    } const kCases[] = {
        {"world suite refused", Depth::Bits8, HostCall::AcquireSuite, 1, kRefused},
        {"handle suite refused", Depth::Bits8, HostCall::AcquireSuite, 2, kRefused},
        {"iterate suite refused going in", Depth::Float32, HostCall::AcquireSuite, 2, kRefused},
        {"handle suite refused at 32 bits", Depth::Float32, HostCall::AcquireSuite, 3, kRefused},
        {"iterate suite refused going out", Depth::Float32, HostCall::AcquireSuite, 4, kRefused},
        {"iteration fails going in", Depth::Float32, HostCall::Iterate, 1, kRefused},
        {"iteration fails going out", Depth::Float32, HostCall::Iterate, 2, kRefused},
        {"no handle", Depth::Bits16, HostCall::NewHandle, 1, kRefused},
        {"handle can't be locked", Depth::Bits8, HostCall::LockHandle, 1, kRefused},
        {"pixel format unknown to the host", Depth::Bits8, HostCall::GetPixelFormat, 1, 0},
        {"no pixels to read", Depth::Bits8, HostCall::GetPixelData8, 1, 0},
        {"no pixels to write", Depth::Bits16, HostCall::GetPixelData16, 2, 0},
        {"first checkout fails", Depth::Bits8, HostCall::CheckoutParam, 1, 0},
        {"size's checkout fails", Depth::Bits8, HostCall::CheckoutParam, 2, 0},
        {"last checkout fails", Depth::Bits8, HostCall::CheckoutParam, 13, 0},
        {"checkin fails", Depth::Bits8, HostCall::CheckinParam, 5, 0},
    };
    const EglHost hostContext;
    hostContext.makeCurrent();
    FaultyHost host(mSession);
    const LiveGLObjects live;
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.name);
        const Host::World picture = input(row.depth);
        const Host::World expected = rendered(picture);
        const auto liveBefore = live.counts();
        const Host::LiveCounts countsBefore = mSession.liveCounts();

        host.fail(row.call, row.nth);
        EXPECT_EQ(renderResult(picture), row.result);
        EXPECT_GE(host.calls(row.call), row.nth) << "the failure was not met";
        EXPECT_EQ(Platform::CurrentEglBinding(), hostContext.binding());
        EXPECT_EQ(mSession.liveCounts(), countsBefore);
        auto liveAfter = live.counts();
        // The first failed checkout asks for a shape that there is not, so one more variant.
        liveAfter["Programs"] = liveBefore.at("Programs");
        EXPECT_EQ(liveAfter, liveBefore);
        EXPECT_STREQ(mSession.outData().return_msg, "");
        EXPECT_EQ(mSession.outData().out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE, 0);

        host.recover();
        EXPECT_TRUE(SamePixels(rendered(picture), expected)) << "the next frame is wrong";
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

    setDown();
    mSession.outData() = {};
    host.refuseSuite("AEGP Utility Suite");
    EXPECT_EQ(mSession.call(PF_Cmd_GLOBAL_SETUP), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(mSession.outData().my_version, 0x80001U);
    EXPECT_EQ(mSession.outData().out_flags, 0x2008002);
    const Host::World picture = input(Depth::Bits8);
    EXPECT_EQ(renderResult(picture), PF_Err_BAD_CALLBACK_PARAM) << "there are no contexts";
    host.recover();
    setUp();
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
