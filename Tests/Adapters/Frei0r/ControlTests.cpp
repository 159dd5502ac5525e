#include "Tests/Adapters/Frei0r/Frei0rHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string_view>

namespace Kerovane::TestSupport {

namespace {

TEST(Controls, MirrorTheEffectsParameters) {
    const Frei0rHost host;
    const Frei0rInstance instance(host, 720, 576);
    std::ostringstream listing;
    listing << std::setprecision(4);
    for (int index = 0; index < host.info().num_params; ++index) {
        const f0r_param_info_t info = host.param(index);
        const std::string_view explanation = info.explanation;
        const std::size_t range =
            explanation.find("; "); // follows what the parameter does; a checkbox has none
        EXPECT_GT(range, 0U);
        listing << info.name << (info.type == F0R_PARAM_BOOL ? " switch " : " ")
                << instance.get(index) << "; "
                << explanation.substr(range == std::string_view::npos ? 0 : range + 2) << '\n';
    }
    EXPECT_EQ(listing.str(), R"(Shape Type 0; 0 Square, 1 Triangle
Size 0.01606; 2 to 500 pixels: (pixels - 2) / 498, or pixels from 2 on, default 10
Ratio 0.0991; 0.01 to 10: (number - 0.01) / 9.99, or number from 2 on, default 1
Size Random 0; 0 to 100 percent: percent / 100, or percent from 2 on, default 0
Size Level 0.5; 1 to 5: (number - 1) / 4, or number from 2 on, default 3
Size Random Seed 0; 0 to 5000: number / 5000, or number from 2 on, default 0
Dissolve 0; 0 to 100 percent: percent / 100, or percent from 2 on, default 0
Dissolve Random Seed 0; 0 to 5000: number / 5000, or number from 2 on, default 0
Transition Type 0; 0 Linear, 0.5 Radial In, 1 Radial Out
Transition Progress 0; 0 to 100 percent: percent / 100, or percent from 2 on, default 0
Feather 0.5; 0 to 500 pixels: pixels / 500, or pixels from 2 on, default 250
Direction 0; 0 to 360 degrees: degrees / 360, or degrees from 2 on, default 0
Use Alpha switch 1; Removed cells leave a transparent hole if on, else the picture shows
Renderer 0; 0 As configured, 0.5 OpenGL, 1 Software
)");
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

TEST(Controls, ClampPositionsToTheirRange) {
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
