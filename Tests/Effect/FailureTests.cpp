#include "Platform/OpenGL/OpenGLDescription.h"
#include "Tests/Effect/CommandWalk.h"
#include "Tests/Effect/FaultyHost.h"
#include "Tests/Support/EglContexts.h"
#include "Tests/Support/GLObserver.h"
#include "Tests/Support/ParamValue.h"

#include <glbinding/Binding.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <thread>
#include <utility>

namespace Kerovane::TestSupport {

namespace {

using Host::Depth;

bool IsTransparentBlack(const Host::World& world) {
    return SamePixels(world, Host::World(world.depth(), world.width(), world.height()));
}

/// Returns the result of a command in which a call of the given kind fails.
PF_Err ResultOfFailing(HostCall call) {
    switch (call) {
    case HostCall::AddParam:
        return FaultyHost::kError;
    case HostCall::AcquireSuite:
    case HostCall::Iterate:
    case HostCall::NewHandle:
    case HostCall::LockHandle:
        return PF_Err_BAD_CALLBACK_PARAM;
    default:
        return PF_Err_NONE;
    }
}

class Failures : public CommandWalk {
protected:
    Failures() { expectFramesAreRight(); }

    /// Renders a frame, drops its pixels and returns the result.
    PF_Err renderResult(const Host::World& picture) {
        Host::World output(picture.depth(), picture.width(), picture.height());
        return mSession.render(picture, output);
    }

    /// Sends the command with the `nth` call of that kind failing (0: none) and checks its result
    /// and what it leaves behind. Returns the numbers of calls that the command made.
    HostCallCounts sendFailing(const Command& command, HostCall call, int nth) {
        const PF_Err expected = nth != 0 ? ResultOfFailing(call) : PF_Err_NONE;
        HostCallCounts calls{};
        expectNothingLeft(command, [&] {
            mSession.outData().return_msg[0] = '\0';
            mHost.fail(call, nth);
            EXPECT_EQ(command.send(), expected);
            calls = mHost.calls();
            mHost.recover();
            EXPECT_EQ(mHost.lockedHandles(), 0);
            EXPECT_TRUE(expected == PF_Err_NONE || mSession.outData().return_msg[0] == '\0');
            EXPECT_EQ(mSession.outData().out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE, 0);
        });
        return calls;
    }

    FaultyHost mHost{mSession};
};

TEST_EVERY_MODULE(Failures);

TEST_P(Failures, FailedHostCallsLeaveNothingBehind) {
    mHostContext.makeCurrent();
    HostCallCounts met{};
    int faults = 0;
    for (const Command& command : commands()) {
        SCOPED_TRACE(command.name);
        const HostCallCounts calls = sendFailing(command, HostCall::Count, 0);
        for (std::size_t kind = 0; kind < calls.size(); ++kind) {
            const auto call = static_cast<HostCall>(kind);
            for (int nth = 1; nth <= calls[kind]; ++nth) {
                SCOPED_TRACE(testing::Message() << NameOf(call) << " fails, number " << nth);
                sendFailing(command, call, nth);
                ++faults;
            }
            met[kind] += calls[kind];
        }
    }
    EXPECT_EQ(std::ranges::count(met, 0), 0) << "a kind of call that no command makes";
    RecordProperty("faults", faults);
    expectNothingAfterSetdown();
}

TEST_P(Failures, MissingHostPixelsDrawATransparentLayer) {
    // Checks the pointer that is uploaded, because a right picture proves nothing: given null, some
    // drivers clear the texture, and others dereference the pointer.
    const GLObserver content(glbinding::Binding::TexSubImage2D,
                             [](auto, auto, auto, auto, auto, auto, auto, auto,
                                const void* pixels) { EXPECT_NE(pixels, nullptr); });
    for (const auto& [depth, call] : {std::pair(Depth::Bits8, HostCall::GetPixelData8),
                                      std::pair(Depth::Bits16, HostCall::GetPixelData16)}) {
        Host::World output = markedOutput(depth);
        mHost.fail(call, 1);
        EXPECT_EQ(mSession.render(input(depth), output), PF_Err_NONE);
        EXPECT_TRUE(IsTransparentBlack(output)) << static_cast<int>(depth);
    }
}

TEST_P(Failures, ReadBackKeepsPixelsEqualToItsMark) {
    constexpr A_u_char kMark =
        0xa5; // the mark that the effect writes to its buffer before reading back
    const Host::World picture = Picture8(kWidth, kHeight, [](int, int) {
        return PF_Pixel8{kMark, kMark, kMark, kMark};
    });
    set("Use Alpha", 0);
    EXPECT_TRUE(SamePixels(rendered(picture), picture));
}

TEST_P(Failures, FramesTooLargeForGLGiveATransparentPicture) {
    constexpr int kTooWide = Host::World::kMaxSide;
    if (Platform::DescribeOpenGL().value().largestSide >= kTooWide) {
        GTEST_SKIP() << "GL here holds all frames that the host has";
    }
    for (const Depth depth : kDepths) {
        Host::World input(depth, kTooWide, 2);
        std::ranges::fill(input.bytes(), std::byte{0x3f});
        Host::World output(depth, kTooWide, 2);
        EXPECT_EQ(mSession.render(input, output), PF_Err_NONE);
        EXPECT_TRUE(IsTransparentBlack(output)) << static_cast<int>(depth);
        expectFramesAreRight();
    }
}

TEST_P(Failures, RefusedContextsGiveATransparentPicture) {
    const auto expectTransparentFrames = [this](EglCall call, int nth, int times = 1) {
        for (const Depth depth : kDepths) {
            SCOPED_TRACE(static_cast<int>(depth));
            const EglHost hostContext;
            hostContext.makeCurrent();
            const auto objectsBefore = mLive.counts();
            Host::World output = markedOutput(depth);
            EglContexts::fail(call, nth, times);
            EXPECT_EQ(mSession.render(input(depth), output), PF_Err_NONE);
            EglContexts::fail(call, 0);
            EXPECT_EQ(mLive.counts(), objectsBefore) << "GL calls reached the host's context";
            EXPECT_EQ(Platform::CurrentEglBinding(), hostContext.binding());
            EXPECT_TRUE(IsTransparentBlack(output));
        }
    };
    const auto onAnotherThread = [](const auto& task) { std::jthread(task).join(); };
    {
        SCOPED_TRACE("a thread's context can't be made current");
        expectTransparentFrames(EglCall::MakeCurrent, 1, 2);
        EglContexts::fail(EglCall::MakeCurrent, 1);
        expectFramesAreRight(); // the second attempt succeeds
    }
    onAnotherThread([&] {
        SCOPED_TRACE("a thread's first context can't be made");
        expectTransparentFrames(EglCall::CreateContext, 1);
        expectFramesAreRight();
    });
    globalSetdown();
    EglContexts::fail(EglCall::CreateContext, 1);
    globalSetup();
    onAnotherThread([&] {
        SCOPED_TRACE("there is no context to share with");
        expectTransparentFrames(EglCall::CreateContext, 0);
    });
    globalSetup();
    onAnotherThread([this] { expectFramesAreRight(); });
    expectFramesAreRight();
}

TEST_P(Failures, UnknownPixelFormatsLeaveTheOutputAlone) {
    mHost.reportFormat(PF_PIXEL_FORMAT_CODE('r', 'g', 'b', 'a'));
    Host::World output = markedOutput(Depth::Bits8);
    EXPECT_EQ(mSession.render(input(Depth::Bits8), output), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_TRUE(SamePixels(output, markedOutput(Depth::Bits8)));
    EXPECT_EQ(mLive.counts().count("Textures"), 0U);
    EXPECT_EQ(mSession.liveCounts(), Host::LiveCounts{});
}

TEST_P(Failures, RefusedParameterEndsTheDeclaration) {
    for (const int nth : {1, 7, 15}) {
        mHost.fail(HostCall::AddParam, nth);
        mSession.outData().num_params = 0;
        EXPECT_EQ(mSession.call(PF_Cmd_PARAMS_SETUP), FaultyHost::kError);
        EXPECT_EQ(mSession.parameters().size(), static_cast<std::size_t>(nth));
        EXPECT_EQ(mHost.calls(HostCall::AddParam), nth);
        EXPECT_EQ(mSession.outData().num_params, 16);
    }
}

TEST_P(Failures, OutOfRangeValuesStillRender) {
    set("Size Random", 100);
    const Host::World picture = input(Depth::Bits8);
    const Host::World expected = rendered(picture);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const A_long whole : {INT32_MIN, -1, 0, 6, 1000, INT32_MAX}) {
        for (const double ratio : {-kInfinity, -1.0, 0.0, 1e-300, 1e300, kInfinity, std::nan("")}) {
            for (const A_u_long denominator : {0U, 1U, 0xffffffffU}) {
                mSession.inData().downsample_x.den = denominator;
                mHost.distort([=](PF_ParamDef& param) { Overwrite(param, whole, ratio); });
                EXPECT_EQ(renderResult(picture), PF_Err_NONE);
            }
        }
    }
    mHost.recover();
    mSession.inData().downsample_x.den = 1;
    EXPECT_TRUE(SamePixels(rendered(picture), expected));
}

TEST_P(Failures, PopupValuesOutsideTheChoicesCompileNoVariant) {
    constexpr short kShapes = 2;
    constexpr short kTransitions = 3;
    const Host::World picture = input(Depth::Bits8);
    const Host::World withoutTransition = rendered(picture);
    set("Transition Progress", 60);
    EXPECT_FALSE(SamePixels(rendered(picture), withoutTransition));
    const int programsBefore = mLive.counts()["Programs"];
    for (const A_long value : {INT32_MIN, -1, 0, 4, 5, 1000, INT32_MAX}) {
        const auto renderedWith = [&](short choices) {
            mHost.distort([=](PF_ParamDef& param) {
                if (param.param_type == PF_Param_POPUP && param.u.pd.num_choices == choices) {
                    param.u.pd.value = value;
                }
            });
            return rendered(picture);
        };
        EXPECT_TRUE(SamePixels(renderedWith(kTransitions), withoutTransition)) << value;
        EXPECT_TRUE(IsTransparentBlack(renderedWith(kShapes))) << value;
    }
    EXPECT_EQ(mLive.counts()["Programs"], programsBefore + 2)
        << "one without a transition, one without cells";
}

TEST_P(Failures, FailedCheckoutsSkipTheRestAndCheckInAll) {
    for (const auto& [call, nth] :
         {std::pair(HostCall::CheckoutParam, 4), std::pair(HostCall::CheckinParam, 2)}) {
        mHost.fail(call, nth);
        EXPECT_EQ(renderResult(input(Depth::Bits8)), PF_Err_NONE);
        EXPECT_EQ(mHost.calls(HostCall::CheckoutParam), nth);
        EXPECT_EQ(mHost.calls(HostCall::CheckinParam), 13);
    }
}

} // namespace

} // namespace Kerovane::TestSupport
