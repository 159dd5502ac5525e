#include "Host/Parameters/KeyframeText.h"
#include "Host/Parameters/Keyframes.h"
#include "Host/Parameters/ParameterSettings.h"

#include "Tests/Host/Parameters/SampleParameters.h"
#include "Tests/Support/ErrorText.h"

#include <gtest/gtest.h>

namespace Kerovane::Host {
namespace {

struct ValueRow {
    Parameter (*parameter)();
    const char* text;
    double frame;
    double value;
};

TEST(Keyframes, InterpolateBetweenKeys) {
    constexpr ValueRow kRows[] = {
        {Percentage, "40", -1e9, 40},
        {Percentage, "1001:0 1051:100", 1000, 0},
        {Percentage, "1001:0 1051:100", 1001, 0},
        {Percentage, "1001:0 1051:100", 1026, 50},
        {Percentage, "1001:0 1051:100", 1026.5, 51},
        {Percentage, "1001:0 1051:100", 1051, 100},
        {Percentage, "1001:0 1051:100", 2000, 100},
        {Percentage, "  0:0:smooth   4:64 8:64", 1, 10},
        {Percentage, "0:0:smooth 4:64", 2, 32},
        {Percentage, "0:0:ease-in 4:64", 1, 4},
        {Percentage, "0:0:ease-out,4:64", 1, 28},
        {Percentage, "0:0:ease-in-out, 4:64", 1, 8},
        {Percentage, "0:0:ease-in-out 4:64", 3, 56},
        {Percentage, "0:10:hold 4:64", 3.999, 10},
        {Percentage, "0:10:hold 4:64", 4, 64},
        {Percentage, "0:0 10:100:hold 20:50", 15, 100},
        {Angle, "-10:0 10:720", 0, 360},
        {Popup, "1:linear 5:radial-out", 4.9, 1},
        {Popup, "1:linear 5:3:hold", 5, 3},
        {Checkbox, "1:on 2:off", 1.5, 1},
        {Seed, "1:0 11:3000", 10, 0},
        {Slider, "1:0 11:3000", 2, 300},
        {Percentage, "0s:0 2.5s:100", 0.5, 20},
    };
    for (const ValueRow& row : kRows) {
        EXPECT_DOUBLE_EQ(ParseKeyframes(row.parameter(), row.text).at(row.frame), row.value)
            << row.text << " at " << row.frame;
    }
}

Parameter Constant() {
    Parameter parameter = Slider();
    parameter.definition.flags = PF_ParamFlag_CANNOT_TIME_VARY;
    return parameter;
}

TEST(Keyframes, RefuseMalformedText) {
    struct Row {
        Parameter (*parameter)();
        const char* text;
        const char* error;
    };
    constexpr Row kRows[] = {
        {Percentage, "", "takes a percentage from 0 to 100, not ''"},
        {Percentage, "1001:0 1050", "'1050' is no key"},
        {Percentage, ":5", "takes one value or keys like 1001:0 1050:0:hold, and ':5' is no key"},
        {Percentage, "a:5", "'a:5' is no key"},
        {Percentage, "nan:5", "'nan:5' is no key"},
        {Percentage, "1:5:hold:6", "'1:5:hold:6' is no key"},
        {Percentage, "1:", "takes a percentage from 0 to 100, not ''"},
        {Percentage, "1:0 2:101", "takes a percentage from 0 to 100, not '101'"},
        {Percentage, "1:0:smoth 2:1", "not 'smoth'; did you mean smooth?"},
        {Percentage, "1:0 1:1", "has its key at frame 1 behind the one at 1"},
        {Percentage, "5:0 3:1", "has its key at frame 3 behind the one at 5"},
        {Percentage, ": ", "is no key"},
        {Percentage, ",5:1,:", "is no key"},
        {Popup, "1:linear 5:radial-inn", "not 'radial-inn'; did you mean radial-in"},
        {Popup, "1:linear:smooth 5:2", "can go hold from key to key, not 'smooth'"},
        {Seed, "1:0:linear 5:2", "can go hold from key to key, not 'linear'"},
        {Slider, "1:0.5 2:3", "takes a whole number from -5 to 3000, not '0.5'"},
        {Percentage, "0s:0 48:100", "has keys at frames and at seconds"},
        {Percentage, "2s:0 1s:100", "has its key at second 1 behind the one at 2"},
        {Percentage, "s:0 1s:100", "'s:0' is no key"},
        {Constant, "1:0 2:3", "can't be animated"},
    };
    for (const Row& row : kRows) {
        const std::string error = ErrorOf([&] { ParseKeyframes(row.parameter(), row.text); });
        EXPECT_NE(error.find(row.error), std::string::npos) << row.text << " gives: " << error;
    }
    EXPECT_THROW(Keyframes(std::vector<Keyframe>{}), Error);
}

TEST(Keyframes, RoundTripAsText) {
    constexpr ValueRow kRows[] = {
        {Percentage, "33.333333333333336", 0, 0}, {Percentage, "1001:0.1:smooth 1050.5:100", 0, 0},
        {Popup, "1:linear 5:radial-in", 0, 0},    {Checkbox, "-3:true 2:false", 0, 0},
        {Slider, "1:2:hold 2:3000", 0, 0},        {Percentage, "0s:0:smooth 2.5s:100", 0, 0},
    };
    for (const ValueRow& row : kRows) {
        const Parameter parameter = row.parameter();
        EXPECT_EQ(FormatKeyframes(parameter, ParseKeyframes(parameter, row.text)), row.text);
    }
}

TEST(Keyframes, OfOneKeyAreConstant) {
    EXPECT_EQ(ParseKeyframes(Percentage(), "1001:40:smooth"), Keyframes(40));
}

TEST(Keyframes, AreEvaluatedAtTheFrameRate) {
    const FrameRate rate(24000, 1001);
    const ParameterSettings settings{{7, ParseKeyframes(Percentage(), "1001:0 1101:100")}};
    const ParameterValues values = ValuesOverTime(settings, rate);
    EXPECT_DOUBLE_EQ(*values.at(7, rate.timeOf(1050)), 49);
    EXPECT_EQ(values.at(8, rate.timeOf(1050)), std::nullopt);

    const ParameterSettings inSeconds{{7, ParseKeyframes(Percentage(), "0s:0 100s:100")}};
    EXPECT_DOUBLE_EQ(*ValuesOverTime(inSeconds, rate).at(7, rate.timeOf(1000)), 1001 / 24.0);
    const auto halfAsFast = [](double frame) { return frame / 12; };
    EXPECT_DOUBLE_EQ(*ValuesOverTime(inSeconds, rate, halfAsFast).at(7, rate.timeOf(600)), 50);
}

} // namespace
} // namespace Kerovane::Host
