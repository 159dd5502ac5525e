#include "Tests/Adapters/Frei0r/Frei0rHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <string>

namespace Kerovane::TestSupport {

namespace {

/// Renders three frames with two instances and returns what came on standard error.
std::string ErrorOfPassingFrames(const std::filesystem::path& module) {
    const Pixels input = MotleyPicture(16, 8);
    testing::internal::CaptureStderr();
    {
        const Frei0rHost host(module);
        Frei0rInstance instance(host, 16, 8);
        EXPECT_EQ(instance.rendered(input), input);
        EXPECT_EQ(instance.rendered(input), input);
        EXPECT_EQ(Frei0rInstance(host, 16, 8).rendered(input), input);
    }
    return testing::internal::GetCapturedStderr();
}

TEST(Failures, PassTheFrameOnAndSayWhyOnce) {
    struct Row {
        const char* fault;
        const char* reason;
    };
    constexpr Row kRows[] = {
        {"setup error", "the effect failed at set-up: error 4 (out of memory)"},
        {"parameter left out", "the effect declares 10 parameters and has 9"},
        {"render error", "the effect failed at rendering: error 516 (bad callback parameter)"},
        {"render message", "the effect failed at rendering: first line second line"},
        {"render exception", "the effect failed at rendering: thrown by the fake effect"},
        {"render throws a number", "the effect failed at rendering: unknown exception"},
    };
    for (const Row& row : kRows) {
        const Installation installation(FAKE_EFFECT);
        setenv("FAKE_EFFECT", row.fault, 1);
        EXPECT_EQ(ErrorOfPassingFrames(installation.module()),
                  std::string("tesselune: frames pass unchanged: ") + row.reason + '\n');
        unsetenv("FAKE_EFFECT");
    }
}

TEST(Failures, WithoutTheEffectLeaveAFilterWithoutParameters) {
    struct Row {
        const char* effect;
        const char* reason;
    };
    constexpr Row kRows[] = {
        {"", "cannot load the effect"},
        {FREI0R_MODULE, "is no effect: it has no EntryPointFunc"},
    };
    for (const Row& row : kRows) {
        const Installation installation(row.effect);
        const std::string error = ErrorOfPassingFrames(installation.module());
        EXPECT_EQ(std::ranges::count(error, '\n'), 2) << error;
        EXPECT_NE(error.find("tesselune: the filter has no parameters: "), std::string::npos);
        EXPECT_NE(error.find("tesselune: frames pass unchanged: "), std::string::npos);
        EXPECT_NE(error.find(row.reason), std::string::npos) << error;
    }
}

TEST(Failures, OfAFrameTooLargeLeaveTheOthersAlone) {
    constexpr unsigned kTooWide = 40000;
    const Frei0rHost host;
    const Pixels wide = MotleyPicture(kTooWide, 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(Frei0rInstance(host, kTooWide, 1).rendered(wide), wide);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("pixels a side"), std::string::npos);
    EXPECT_NE(Frei0rInstance(host, 32, 32).rendered(MotleyPicture(32, 32)), MotleyPicture(32, 32));
}

TEST(Failures, OfAnEmptyFrameMakeNoInstance) {
    const Frei0rHost host;
    EXPECT_EQ(host.construct(0, 8), nullptr);
    EXPECT_EQ(host.construct(8, 0), nullptr);
}

} // namespace

} // namespace Kerovane::TestSupport
