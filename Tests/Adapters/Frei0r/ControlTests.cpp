#include "Tests/Adapters/Frei0r/Frei0rHost.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace Kerovane::TestSupport {

namespace {

TEST(Controls, AreMadeFromWhatTheEffectDeclares) {
    struct Row {
        const char* name;
        int type;
        double position; ///< of the default
        const char* positions;
    };
    constexpr Row kRows[] = {
        {"Shape Type", F0R_PARAM_DOUBLE, 0, "; 0 Square, 1 Triangle"},
        {"Size", F0R_PARAM_DOUBLE, 8.0 / 498,
         "; 2 to 500 pixels: (pixels - 2) / 498, or pixels from 2 on, default 10"},
        {"Ratio", F0R_PARAM_DOUBLE, 0.99 / 9.99,
         "; 0.01 to 10: (number - 0.01) / 9.99, or number from 2 on, default 1"},
        {"Size Random", F0R_PARAM_DOUBLE, 0,
         "; 0 to 100 percent: percent / 100, or percent from 2 on, default 0"},
        {"Size Level", F0R_PARAM_DOUBLE, 0.5,
         "; 1 to 5: (number - 1) / 4, or number from 2 on, default 3"},
        {"Size Random Seed", F0R_PARAM_DOUBLE, 0,
         "; 0 to 5000: number / 5000, or number from 2 on, default 0"},
        {"Dissolve", F0R_PARAM_DOUBLE, 0,
         "; 0 to 100 percent: percent / 100, or percent from 2 on, default 0"},
        {"Dissolve Random Seed", F0R_PARAM_DOUBLE, 0,
         "; 0 to 5000: number / 5000, or number from 2 on, default 0"},
        {"Transition Type", F0R_PARAM_DOUBLE, 0, "; 0 Linear, 0.5 Radial In, 1 Radial Out"},
        {"Transition Progress", F0R_PARAM_DOUBLE, 0,
         "; 0 to 100 percent: percent / 100, or percent from 2 on, default 0"},
        {"Feather", F0R_PARAM_DOUBLE, 0.5,
         "; 0 to 500 pixels: pixels / 500, or pixels from 2 on, default 250"},
        {"Direction", F0R_PARAM_DOUBLE, 0,
         "; 0 to 360 degrees: degrees / 360, or degrees from 2 on, default 0"},
        {"Use Alpha", F0R_PARAM_BOOL, 1, "hole if on, else the picture shows"},
        {"Renderer", F0R_PARAM_DOUBLE, 0, "; 0 As configured, 0.5 OpenGL, 1 Software"},
    };
    const Frei0rHost host;
    ASSERT_EQ(host.info().num_params, static_cast<int>(std::size(kRows)));
    const Frei0rInstance instance(host, 720, 576);
    int index = 0;
    for (const Row& row : kRows) {
        const f0r_param_info_t info = host.param(index);
        EXPECT_STREQ(info.name, row.name);
        EXPECT_EQ(info.type, row.type) << row.name;
        const std::string explanation = info.explanation;
        EXPECT_TRUE(explanation.ends_with(row.positions)) << explanation;
        EXPECT_FALSE(explanation.starts_with(row.positions)) << "the meaning stands before it";
        EXPECT_NEAR(instance.get(index), row.position, 1e-6) << row.name;
        ++index;
    }
}

TEST(Controls, KeepThePositionThatTheHostSet) {
    const Frei0rHost host;
    Frei0rInstance instance(host, 16, 16);
    const Pixels input = MotleyPicture(16, 16);
    for (int index = 0; index < host.info().num_params; ++index) {
        instance.set(index, 0.3);
    }
    instance.rendered(input);
    for (int index = 0; index < host.info().num_params; ++index) {
        EXPECT_EQ(instance.get(index), 0.3) << index;
    }
    instance.set(99, 0.5);
    instance.set(-1, 0.5);
    EXPECT_EQ(instance.get(99), -1) << "nothing there to read";
}

TEST(Controls, TakePositionsBeyondTheirEndsAsTheEnds) {
    constexpr int kSize = 1;
    const Frei0rHost host;
    const Pixels input = MotleyPicture(64, 64);
    const auto rendered = [&](double size) {
        Frei0rInstance instance(host, 64, 64);
        instance.set(kSize, size);
        return instance.rendered(input);
    };
    ASSERT_NE(rendered(0), rendered(1));
    EXPECT_EQ(rendered(-7), rendered(0));
    EXPECT_EQ(rendered(std::numeric_limits<double>::quiet_NaN()), rendered(0));
    EXPECT_EQ(rendered(1.5), rendered(1));
    EXPECT_EQ(rendered(0.0201), rendered(0.0200)) << "both 12 pixels";
}

} // namespace

} // namespace Kerovane::TestSupport
