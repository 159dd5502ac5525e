#include "Platform/OpenGL/OpenGLDescription.h"
#include "Tests/Effect/EffectFixture.h"
#include "Tests/Effect/FaultyHost.h"
#include "Tests/Support/EglContexts.h"
#include "Tests/Support/EglHost.h"
#include "Tests/Support/GLObserver.h"
#include "Tests/Support/LiveGLObjects.h"
#include "Tests/Support/ParamValue.h"

#include <glbinding/Binding.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace Kerovane::TestSupport {

namespace {

using Host::Depth;

constexpr Depth kDepths[] = {Depth::Bits8, Depth::Bits16, Depth::Float32};

constexpr int kWidth = 40;
constexpr int kHeight = 30;

Host::World Input(Depth depth) {
    return AtDepth(SmoothPicture(kWidth, kHeight, true), depth);
}

/// An output whose every byte tells whether it was written.
Host::World MarkedOutput(Depth depth) {
    Host::World output(depth, kWidth, kHeight);
    std::ranges::fill(output.bytes(), std::byte{0x33});
    return output;
}

bool IsTransparentBlack(const Host::World& world) {
    return SamePixels(world, Host::World(world.depth(), world.width(), world.height()));
}

/// A command of the host's, and what it gets where one of the host's calls fails in it.
struct Command {
    std::string name;
    std::function<void()> before; ///< brings the effect to where the command is sent
    std::function<PF_Err()> send;
    std::function<void()> after;        ///< brings it back to where it renders
    std::map<HostCall, PF_Err> results; ///< for each kind of call that the command makes
};

class Failures : public EveryModule {
protected:
    Failures() {
        for (const Depth depth : kDepths) {
            mExpected.emplace(depth, rendered(Input(depth)));
        }
    }

    /// The result of one frame, whose pixels are lost.
    PF_Err renderResult(const Host::World& input) {
        Host::World output(input.depth(), input.width(), input.height());
        return mSession.render(input, output);
    }

    std::vector<Command> commands();

    /// Sends the command with the `nth` call of that kind failing, 0 for none, and checks what it
    /// leaves behind. Returns the calls that it made.
    HostCallCounts sendFailing(const Command& command, HostCall call, int nth);

    void expectFramesAreRight() {
        for (const Depth depth : kDepths) {
            EXPECT_TRUE(SamePixels(rendered(Input(depth)), mExpected.at(depth)))
                << "the next frame is wrong at " << static_cast<int>(depth) << " bits";
        }
    }

    /// Live objects by kind. Programs are left out: a variant may be new, and is kept.
    std::map<std::string, int> objectsOfFrames() const {
        auto counts = mLive.counts();
        counts.erase("Programs");
        return counts;
    }

    int programs() const { return mLive.counts()["Programs"]; }

    EglHost mHostContext;
    LiveGLObjects mLive; ///< nothing is made before the first frame
    FaultyHost mHost{mSession};
    std::map<Depth, Host::World> mExpected;
};

std::vector<Command> Failures::commands() {
    constexpr PF_Err kRefused = PF_Err_BAD_CALLBACK_PARAM;
    const auto nothing = [] {};
    const auto call = [this](PF_Cmd command) {
        return [=, this] { return mSession.call(command); };
    };
    std::vector<Command> commands = {
        {"about",
         nothing,
         call(PF_Cmd_ABOUT),
         nothing,
         {{HostCall::AcquireSuite, kRefused},
          {HostCall::ReleaseSuite, PF_Err_NONE},
          {HostCall::FormatText, PF_Err_NONE}}},
        {"set-up",
         [this] { globalSetdown(); },
         call(PF_Cmd_GLOBAL_SETUP),
         [this] { globalSetup(); },
         {{HostCall::AcquireSuite, kRefused},
          {HostCall::ReleaseSuite, PF_Err_NONE},
          {HostCall::Register, PF_Err_NONE}}},
        {"parameters",
         nothing,
         call(PF_Cmd_PARAMS_SETUP),
         call(PF_Cmd_PARAMS_SETUP),
         {{HostCall::CopyText, PF_Err_NONE}, {HostCall::AddParam, FaultyHost::kError}}},
        {"set-down",
         [this] {
             PF_InData& inData = mSession.inData();
             inData.sequence_data = inData.utils->host_new_handle(8);
             inData.global_data = inData.utils->host_new_handle(8);
         },
         call(PF_Cmd_GLOBAL_SETDOWN),
         [this] {
             mSession.inData().sequence_data = nullptr;
             mSession.inData().global_data = nullptr;
             globalSetup();
         },
         {}},
    };
    for (const PF_Cmd unused : {PF_Cmd_UNUSED_0, PF_Cmd_SEQUENCE_SETUP, PF_Cmd_SEQUENCE_RESETUP,
                                PF_Cmd_SEQUENCE_FLATTEN, PF_Cmd_SEQUENCE_SETDOWN, PF_Cmd_DO_DIALOG,
                                PF_Cmd_FRAME_SETUP, PF_Cmd_FRAME_SETDOWN, PF_Cmd_EVENT}) {
        commands.push_back(
            {"command " + std::to_string(unused), nothing, call(unused), nothing, {}});
    }
    const struct {
        Depth depth;
        HostCall pixels;
        PF_Err result;
    } kFrames[] = {{Depth::Bits8, HostCall::GetPixelData8, PF_Err_NONE},
                   {Depth::Bits16, HostCall::GetPixelData16, PF_Err_NONE},
                   {Depth::Float32, HostCall::Iterate, kRefused}};
    for (const auto& [depth, pixels, result] : kFrames) {
        const auto frame = [this, depth = depth] {
            Host::World output = MarkedOutput(depth);
            const PF_Err err = mSession.render(Input(depth), output);
            EXPECT_TRUE(err == PF_Err_NONE || SamePixels(output, MarkedOutput(depth)))
                << "a frame that failed was written";
            return err;
        };
        commands.push_back({"frame at " + std::to_string(static_cast<int>(depth)) + " bits",
                            nothing,
                            frame,
                            nothing,
                            {{HostCall::AcquireSuite, kRefused},
                             {HostCall::ReleaseSuite, PF_Err_NONE},
                             {HostCall::GetPixelFormat, PF_Err_NONE},
                             {HostCall::CheckoutParam, PF_Err_NONE},
                             {HostCall::CheckinParam, PF_Err_NONE},
                             {HostCall::NewHandle, kRefused},
                             {HostCall::LockHandle, kRefused},
                             {pixels, result}}});
    }
    return commands;
}

HostCallCounts Failures::sendFailing(const Command& command, HostCall call, int nth) {
    const Host::LiveCounts countsBefore = mSession.liveCounts();
    auto objectsBefore = objectsOfFrames();
    mSession.outData().return_msg[0] = '\0';
    command.before();
    mHost.fail(call, nth);
    const PF_Err result = command.send();
    const HostCallCounts calls = mHost.calls();

    EXPECT_EQ(result, nth != 0 ? command.results.at(call) : PF_Err_NONE);
    EXPECT_EQ(Platform::CurrentEglBinding(), mHostContext.binding());
    EXPECT_EQ(mSession.liveCounts(), countsBefore);
    EXPECT_EQ(mHost.lockedHandles(), 0);
    for (const auto& [kind, count] : objectsOfFrames()) {
        EXPECT_LE(count, objectsBefore[kind]) << kind;
    }
    EXPECT_TRUE(result == PF_Err_NONE || mSession.outData().return_msg[0] == '\0');
    EXPECT_EQ(mSession.outData().out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE, 0);

    mHost.recover();
    command.after();
    expectFramesAreRight();
    EXPECT_EQ(objectsOfFrames(), objectsBefore);
    return calls;
}

TEST_EVERY_MODULE(Failures);

TEST_P(Failures, OfEveryHostCallOfEveryCommandLeaveNothingBehind) {
    mHostContext.makeCurrent();
    int faults = 0;
    for (const Command& command : commands()) {
        SCOPED_TRACE(command.name);
        const HostCallCounts calls = sendFailing(command, HostCall::Count, 0);
        for (std::size_t kind = 0; kind < calls.size(); ++kind) {
            const auto call = static_cast<HostCall>(kind);
            EXPECT_EQ(calls[kind] != 0, command.results.contains(call)) << NameOf(call);
            for (int nth = 1; nth <= calls[kind] && command.results.contains(call); ++nth) {
                SCOPED_TRACE(testing::Message() << NameOf(call) << " fails, number " << nth);
                sendFailing(command, call, nth);
                ++faults;
            }
        }
    }
    RecordProperty("faults", faults);
    globalSetdown();
    EXPECT_EQ(mLive.counts(), (std::map<std::string, int>{}));
    EXPECT_EQ(EglContexts::live(), 1) << "the host's own";
    globalSetup();
}

TEST_P(Failures, OfTheHostToGiveItsPixelsAreATransparentLayer) {
    // Many a driver clears what has no content, some read what null points to.
    const GLObserver content(glbinding::Binding::TexSubImage2D,
                             [](auto, auto, auto, auto, auto, auto, auto, auto,
                                const void* pixels) { EXPECT_NE(pixels, nullptr); });
    for (const auto& [depth, call] : {std::pair(Depth::Bits8, HostCall::GetPixelData8),
                                      std::pair(Depth::Bits16, HostCall::GetPixelData16)}) {
        Host::World output = MarkedOutput(depth);
        mHost.fail(call, 1);
        EXPECT_EQ(mSession.render(Input(depth), output), PF_Err_NONE);
        EXPECT_TRUE(IsTransparentBlack(output)) << static_cast<int>(depth);
    }
}

TEST_P(Failures, OfGLToReadAreNotSeenInAPictureThatLooksLikeOne) {
    constexpr A_u_char kMark = 0xa5; // what the effect puts where it expects to read
    const Host::World picture = Picture8(kWidth, kHeight, [](int, int) {
        return PF_Pixel8{kMark, kMark, kMark, kMark};
    });
    set("Use Alpha", 0);
    EXPECT_TRUE(SamePixels(rendered(picture), picture));
}

TEST_P(Failures, OfGLToHoldAFrameAreATransparentPicture) {
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

TEST_P(Failures, OfTheDriverToGiveAContextReachNeitherHostNorOutput) {
    const auto expectTransparentFrames = [this](EglCall call, int nth, int times = 1) {
        for (const Depth depth : kDepths) {
            SCOPED_TRACE(static_cast<int>(depth));
            const EglHost hostContext;
            hostContext.makeCurrent();
            const auto objectsBefore = mLive.counts();
            Host::World output = MarkedOutput(depth);
            EglContexts::fail(call, nth, times);
            EXPECT_EQ(mSession.render(Input(depth), output), PF_Err_NONE);
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
        expectFramesAreRight(); // at the second attempt
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

TEST_P(Failures, OfACallThatADepthNeedsAreMet) {
    struct {
        Depth depth;
        int suites, pixels8, pixels16, iterations;
    } const kCases[] = {{Depth::Bits8, 2, 1 + kHeight, 0, 0},
                        {Depth::Bits16, 2, 0, 1 + kHeight, 0},
                        {Depth::Float32, 4, 0, 0, 2}};
    for (const auto& [depth, suites, pixels8, pixels16, iterations] : kCases) {
        mHost.recover();
        rendered(Input(depth));
        EXPECT_EQ(mHost.calls(HostCall::AcquireSuite), suites);
        EXPECT_EQ(mHost.calls(HostCall::GetPixelData8), pixels8) << "one going in, one a row out";
        EXPECT_EQ(mHost.calls(HostCall::GetPixelData16), pixels16);
        EXPECT_EQ(mHost.calls(HostCall::Iterate), iterations);
        EXPECT_EQ(mHost.calls(HostCall::CheckoutParam), 13);
        EXPECT_EQ(mHost.calls(HostCall::CheckinParam), 13);
        EXPECT_EQ(mHost.calls(HostCall::NewHandle), 1);
    }
}

TEST_P(Failures, OfAPixelFormatThatIsNoneOfTheThreeLeaveTheOutputAlone) {
    mHost.reportFormat(PF_PIXEL_FORMAT_CODE('r', 'g', 'b', 'a'));
    Host::World output = MarkedOutput(Depth::Bits8);
    EXPECT_EQ(mSession.render(Input(Depth::Bits8), output), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_TRUE(SamePixels(output, MarkedOutput(Depth::Bits8)));
    EXPECT_EQ(mLive.counts().count("Textures"), 0U);
    EXPECT_EQ(mSession.liveCounts(), Host::LiveCounts{});
}

TEST_P(Failures, OfASetUpLeaveTheDeclarationAndNoContexts) {
    mHostContext.makeCurrent();
    globalSetdown();
    mSession.outData() = {};
    mHost.refuseSuite("AEGP Utility Suite");
    EXPECT_EQ(mSession.call(PF_Cmd_GLOBAL_SETUP), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(mSession.outData().my_version, 0x80001U);
    EXPECT_EQ(mSession.outData().out_flags, 0x2008002);
    EXPECT_EQ(renderResult(Input(Depth::Bits8)), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(Platform::CurrentEglBinding(), mHostContext.binding());
    mHost.recover();
    globalSetup();
}

TEST_P(Failures, OfAParameterEndTheListThere) {
    for (const int nth : {1, 7, 15}) {
        mHost.fail(HostCall::AddParam, nth);
        mSession.outData().num_params = 0;
        EXPECT_EQ(mSession.call(PF_Cmd_PARAMS_SETUP), FaultyHost::kError);
        EXPECT_EQ(mSession.parameters().size(), static_cast<std::size_t>(nth));
        EXPECT_EQ(mHost.calls(HostCall::AddParam), nth);
        EXPECT_EQ(mSession.outData().num_params, 16);
    }
}

TEST_P(Failures, OfAHostToKeepItsRangesEndInAPicture) {
    set("Size Random", 100);
    const Host::World picture = Input(Depth::Bits8);
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

TEST_P(Failures, OfAHostToKeepItsChoicesCountAsNoneOfThemAndMakeNoVariants) {
    constexpr short kShapes = 2;
    constexpr short kTransitions = 3;
    const Host::World picture = Input(Depth::Bits8);
    const Host::World withoutTransition = rendered(picture);
    set("Transition Progress", 60);
    EXPECT_FALSE(SamePixels(rendered(picture), withoutTransition));
    const int programsBefore = programs();
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
    EXPECT_EQ(programs(), programsBefore + 2) << "one without a transition, one without cells";
}

TEST_P(Failures, OfACheckoutSkipThoseBehindItAndCheckInAll) {
    const Host::World picture = Input(Depth::Bits8);
    mHost.fail(HostCall::CheckoutParam, 4);
    EXPECT_EQ(renderResult(picture), PF_Err_NONE);
    EXPECT_EQ(mHost.calls(HostCall::CheckoutParam), 4);
    EXPECT_EQ(mHost.calls(HostCall::CheckinParam), 13);
    mHost.fail(HostCall::CheckinParam, 2);
    EXPECT_EQ(renderResult(picture), PF_Err_NONE);
    EXPECT_EQ(mHost.calls(HostCall::CheckoutParam), 2);
    EXPECT_EQ(mHost.calls(HostCall::CheckinParam), 13);
}

} // namespace

} // namespace Kerovane::TestSupport
