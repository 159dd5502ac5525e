#include "Host/Parameters/FrameRate.h"

#include "Tests/Support/ErrorText.h"

#include <gtest/gtest.h>

namespace Kerovane::Host {
namespace {

TEST(FrameRate, ParsesDecimalsAndFractions) {
    struct Row {
        const char* text;
        A_u_long timeScale;
        A_long timeStep;
    };
    constexpr Row kRows[] = {
        {"24", 24, 1},           {"25.0", 25, 1},
        {"12.5", 25, 2},         {"24000/1001", 24000, 1001},
        {"23.976", 24000, 1001}, {"23.98", 24000, 1001},
        {"29.97", 30000, 1001},  {"59.94", 60000, 1001},
        {"50/2", 25, 1},         {"0.5", 1, 2},
    };
    for (const Row& row : kRows) {
        const FrameRate rate = ParseFrameRate(row.text);
        EXPECT_EQ(rate.timeScale(), row.timeScale) << row.text;
        EXPECT_EQ(rate.timeStep(), row.timeStep) << row.text;
    }
}

TEST(FrameRate, RefusesMalformedText) {
    for (const char* text :
         {"", "0", "-24", "nan", "inf", "1e9", "24fps", "24/0", "24/", "/1", "-24/-1", "24/1/1"}) {
        EXPECT_NE(ErrorOf([&] { ParseFrameRate(text); }).find("takes frames a second"),
                  std::string::npos)
            << text;
    }
}

TEST(FrameRate, RoundTripsFramesThroughTime) {
    for (const FrameRate rate : {FrameRate(), FrameRate(24000, 1001), FrameRate(1, 3)}) {
        for (const A_long frame : {-100, 0, 1, 1001, 86399, 500000}) {
            EXPECT_EQ(rate.frameAt(rate.timeOf(frame)), frame);
        }
    }
    EXPECT_EQ(FrameRate().frameAt({.ticks = 3, .scale = 48}), 1.5) << "also between frames";
}

TEST(FrameRate, RefusesFramesThatOverflowTheHostsTime) {
    EXPECT_NO_THROW(FrameRate(24000, 1001).timeOf(2'000'000));
    EXPECT_THROW(FrameRate(24000, 1001).timeOf(3'000'000), Error);
    EXPECT_THROW(FrameRate().timeOf(2147483647), Error) << "the frame's end is beyond it";
}

} // namespace
} // namespace Kerovane::Host
