#include "Tests/Adapters/Frei0r/Frei0rHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>

namespace Kerovane::TestSupport {

namespace {

/// Renders three frames with two instances, expects them unchanged and returns the text on standard
/// error.
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

TEST(Failures, PassTheFrameThroughAndReportTheReasonOnce) {
    const std::pair<const char*, const char*> rows[] = {
        {"setup error", "at set-up: error 4"},
        {"parameter left out", "declares 10 parameters and has 9"},
        {"render error", "at rendering: error 516"},
        {"render message", "at rendering: first line second line"},
        {"render exception", "at rendering: thrown by the fake effect"},
        {"render throws a number", "at rendering: unknown exception"},
    };
    for (const auto& [fault, reason] : rows) {
        const Installation installation(FAKE_EFFECT);
        setenv("FAKE_EFFECT", fault, 1);
        const std::string error = ErrorOfPassingFrames(installation.module());
        unsetenv("FAKE_EFFECT");
        EXPECT_EQ(std::ranges::count(error, '\n'), 1) << error;
        EXPECT_NE(error.find(reason), std::string::npos) << error;
    }
}

TEST(Failures, MissingEffectLeavesAFilterWithoutParameters) {
    for (const char* effect : {"", FREI0R_MODULE}) {
        const Installation installation(effect);
        const std::string error = ErrorOfPassingFrames(installation.module());
        EXPECT_EQ(std::ranges::count(error, '\n'), 2) << error;
        EXPECT_NE(error.find("the filter has no parameters: "), std::string::npos) << error;
        EXPECT_NE(error.find("frames pass unchanged: "), std::string::npos) << error;
    }
}

TEST(Failures, OversizedFramesPassThroughAndDoNotAffectOthers) {
    constexpr unsigned kTooWide = 40000;
    const Frei0rHost host;
    const Pixels wide = MotleyPicture(kTooWide, 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(Frei0rInstance(host, kTooWide, 1).rendered(wide), wide);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("pixels a side"), std::string::npos);
    EXPECT_NE(Frei0rInstance(host, 32, 32).rendered(MotleyPicture(32, 32)), MotleyPicture(32, 32));
}

TEST(Failures, EmptyFramesGetNoInstance) {
    const Frei0rHost host;
    EXPECT_EQ(host.construct(0, 8), nullptr);
    EXPECT_EQ(host.construct(8, 0), nullptr);
}

} // namespace

} // namespace Kerovane::TestSupport
