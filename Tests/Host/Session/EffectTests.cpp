#include "Host/Session/Effect.h"

#include "Tests/Support/ErrorText.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace Kerovane::Host {
namespace {

/// Runs the fake effect, which shows the fault that FAKE_EFFECT names.
class EffectTest : public testing::Test {
protected:
    EffectTest() { setenv("FAKE_EFFECT_TRACE", (mFolder / "trace").c_str(), 1); }
    ~EffectTest() override {
        unsetenv("FAKE_EFFECT");
        unsetenv("FAKE_EFFECT_TRACE");
    }

    static void show(const char* fault) { setenv("FAKE_EFFECT", fault, 1); }

    /// Returns the codes of the commands that the effect got, in order.
    std::string commands() const { return mFolder.contentOf("trace"); }

    TemporaryFolder mFolder;
    World mInput{Depth::Bits8, 4, 3};
    World mOutput{Depth::Bits8, 4, 3, 20};
};

TEST_F(EffectTest, SetsUpRendersAndSetsDown) {
    int handles = 0;
    {
        Effect effect(FAKE_EFFECT);
        handles = EffectSession(FAKE_EFFECT).liveCounts().handles;
        EXPECT_EQ(effect.parameters().size(), 9U);
        EXPECT_EQ(effect.version(), PF_VERSION(2, 3, 4, PF_Stage_BETA, 5));
        EXPECT_EQ(effect.about(), "Fake\nAn effect for tests");
        effect.render({}, {}, mInput, mOutput);
    }
    EXPECT_EQ(commands(), "1 4 0 11 3 ");
    EXPECT_EQ(handles, 1) << "the effect's global data";
    EXPECT_EQ(EffectSession(FAKE_EFFECT).liveCounts(), LiveCounts{});
}

TEST_F(EffectTest, RendersWithTheValuesOfEachCall) {
    mInput.row<PF_Pixel8>(2)[3] = {.alpha = 9, .red = 10, .green = 0, .blue = 255};
    mOutput.bytes().back() = std::byte{77};
    Effect effect(FAKE_EFFECT);
    ParameterValues values;
    values.set(FindParameter(effect.parameters(), "Invert")->id(), 1);
    effect.render({}, values, mInput, mOutput);
    const PF_Pixel8& inverted = mOutput.row<PF_Pixel8>(2)[3];
    EXPECT_EQ(inverted.alpha, 9);
    EXPECT_EQ(inverted.red, 245);
    EXPECT_EQ(inverted.blue, 0);
    EXPECT_EQ(mOutput.bytes().back(), std::byte{77}) << "padding";
    effect.render({}, {}, mInput, mOutput);
    EXPECT_EQ(mOutput.row<PF_Pixel8>(2)[3].red, 10) << "values don't outlive the call";
}

TEST_F(EffectTest, PassesTheFrameToTheModule) {
    Effect effect(FAKE_EFFECT);
    show("report frame");
    mInput.layer().pix_aspect_ratio = {.num = 2, .den = 1};
    const Frame frame{.time = {.ticks = 50, .scale = 25}, .timeStep = 2, .downsample = 4};
    EXPECT_EQ(ErrorOf([&] { effect.render(frame, {}, mInput, mOutput); }),
              "the effect failed at rendering: "
              "time 50/25 step 2 downsample 1/4 size 16x12 aspect 2/1");
}

TEST_F(EffectTest, ReportsWhyRenderingFailed) {
    struct Row {
        const char* fault;
        const char* text;
    };
    constexpr Row kRows[] = {
        {"render error", "the effect failed at rendering: error 516 (bad callback parameter)"},
        {"render message", "the effect failed at rendering: first line second line"},
        {"render exception", "the effect failed at rendering: thrown by the fake effect"},
        {"render throws a number", "the effect failed at rendering: unknown exception"},
    };
    Effect effect(FAKE_EFFECT);
    for (const Row& row : kRows) {
        show(row.fault);
        EXPECT_EQ(ErrorOf([&] { effect.render({}, {}, mInput, mOutput); }), row.text);
    }
    show("");
    EXPECT_NO_THROW(effect.render({}, {}, mInput, mOutput)) << "a failed frame is not the end";
}

TEST_F(EffectTest, ReportsWhySetUpFailedAndSetsDown) {
    struct Row {
        const char* fault;
        const char* text;
        const char* commands;
    };
    constexpr Row kRows[] = {
        {"setup error", "the effect failed at set-up: error 4 (out of memory)", "1 "},
        {"disk id used twice",
         "the effect failed at parameter set-up: the disk id 7 is used twice; "
         "error 516 (bad callback parameter)",
         "1 4 3 "},
        {"unknown type",
         "the effect failed at parameter set-up: the parameter 'Amount (px)' has the type 5, which "
         "this host doesn't know; error 514 (unrecognised parameter type)",
         "1 4 3 "},
        {"default outside",
         "the effect failed at parameter set-up: the parameter 'Amount (px)' has its default 101 "
         "outside -10 to 100; error 514 (unrecognised parameter type)",
         "1 4 3 "},
        {"choices mismatch",
         "the effect failed at parameter set-up: the popup 'Depth' has 4 choices and names 3; "
         "error 514 (unrecognised parameter type)",
         "1 4 3 "},
        {"parameter left out", "the effect declares 10 parameters and has 9", "1 4 3 "},
    };
    for (const Row& row : kRows) {
        std::filesystem::remove(mFolder / "trace");
        show(row.fault);
        EXPECT_EQ(ErrorOf([] { Effect effect(FAKE_EFFECT); }), row.text);
        EXPECT_EQ(commands(), row.commands) << row.fault;
    }
}

TEST_F(EffectTest, RefusesAnOutputOfAnotherDepthOrSize) {
    Effect effect(FAKE_EFFECT);
    World deeper(Depth::Bits16, 4, 3);
    World smaller(Depth::Bits8, 3, 3);
    EXPECT_THROW(effect.render({}, {}, mInput, deeper), Error);
    EXPECT_THROW(effect.render({}, {}, mInput, smaller), Error);
}

} // namespace
} // namespace Kerovane::Host
