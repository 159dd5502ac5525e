#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterText.h"
#include "Host/Text/Error.h"

#include "Tests/Host/Parameters/SampleParameters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Kerovane::Host {
namespace {

TEST(Parameter, ConvertsItsDefinitionToUserUnits) {
    EXPECT_EQ(Slider().defaultValue, 10);
    EXPECT_EQ(Slider().slider.max, 500);
    EXPECT_EQ(FloatSlider().valid.min, 0.1) << "the number that was written, not the float's";
    EXPECT_EQ(Percentage().valid.max, 100);
    EXPECT_TRUE(Percentage().isPercent());
    EXPECT_EQ(Angle().valid.min, -32768) << "an angle without bounds has those of its type";
    EXPECT_EQ(Checkbox().displayName(), "Use Alpha");
    EXPECT_EQ(Popup().choices, (std::vector<std::string>{"Linear", "Radial In", "Radial Out"}));
}

TEST(Parameter, AcceptsAnUnterminatedName) {
    PF_ParamDef def{};
    def.param_type = PF_Param_GROUP_START;
    std::fill(std::begin(def.name), std::end(def.name), 'n');
    EXPECT_EQ(MakeParameter(def).name, std::string(32, 'n'));
}

TEST(ParameterValue, IsRoundedAndClampedToItsType) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(DefinitionWithValue(Slider(), 12.5).u.sd.value, 13);
    EXPECT_EQ(DefinitionWithValue(Slider(), 1e300).u.sd.value, 3000);
    EXPECT_EQ(DefinitionWithValue(Slider(), kNan).u.sd.value, -5);
    EXPECT_EQ(DefinitionWithValue(Percentage(), 33.3).u.fd.value, 2182349);
    EXPECT_EQ(DefinitionWithValue(Percentage(), 101).u.fd.value, 100 << 16);
    EXPECT_EQ(DefinitionWithValue(FloatSlider(), 0.123).u.fs_d.value, 0.123);
    EXPECT_EQ(DefinitionWithValue(Angle(), -45.5).u.ad.value, -2981888);
    EXPECT_EQ(DefinitionWithValue(Angle(), 40000).u.ad.value, 32767 * 65536);
    EXPECT_EQ(DefinitionWithValue(Checkbox(), 0).u.bd.value, 0);
    EXPECT_EQ(DefinitionWithValue(Popup(), 3).u.pd.value, 3);
}

TEST(TypedName, IsLowerCaseWithHyphens) {
    struct Row {
        const char* shown;
        const char* typed;
    };
    constexpr Row kRows[] = {{"Size Random Seed", "size-random-seed"},
                             {"Radial In", "radial-in"},
                             {"  Amount (px) ", "amount-px"},
                             {"Größe", "größe"},
                             {"--", ""},
                             {"", ""}};
    for (const Row& row : kRows) {
        EXPECT_EQ(TypedName(row.shown), row.typed);
    }
}

struct TextRow {
    Parameter (*parameter)();
    const char* text;
    double value;
};

TEST(ParseValue, ReadsNumbersChoicesAndSwitches) {
    constexpr TextRow kRows[] = {
        {Slider, "3000", 3000},      {Slider, "-5", -5},      {FloatSlider, "0.1", 0.1},
        {FloatSlider, "1e1", 10},    {Percentage, "60", 60},  {Percentage, "0.5", 0.5},
        {Angle, "-45.5", -45.5},     {Checkbox, "true", 1},   {Checkbox, "off", 0},
        {Popup, "radial-out", 3},    {Popup, "2", 2},         {Popup, "Radial In", 2},
        {Slider, "1e3", 1000},       {Percentage, "50%", 50}, {Angle, "45deg", 45},
        {Angle, "-9.5\u00B0", -9.5}, {Checkbox, "True", 1},   {Checkbox, "NO", 0},
    };
    for (const TextRow& row : kRows) {
        EXPECT_EQ(ParseValue(row.parameter(), row.text), row.value) << row.text;
    }
}

TEST(ParseValue, RefusesInvalidValues) {
    constexpr TextRow kRows[] = {
        {Slider, "3001", 0},    {Slider, "-6", 0},       {Slider, "1.5", 0},
        {Slider, "", 0},        {Slider, "12px", 0},     {Slider, " 12", 0},
        {Slider, "inf", 0},     {FloatSlider, "nan", 0}, {FloatSlider, "0.09", 0},
        {Percentage, "-1", 0},  {Angle, "32768", 0},     {Checkbox, "2", 0},
        {Slider, "50%", 0},     {Percentage, "5deg", 0}, {Percentage, "%", 0},
        {Percentage, "5 %", 0}, {Checkbox, "tr-ue", 0},  {Angle, "4px", 0},
        {Checkbox, "", 0},      {Popup, "radial", 0},    {Popup, "0", 0},
        {Popup, "4", 0},        {Popup, "1.5", 0},       {Popup, "", 0},
    };
    for (const TextRow& row : kRows) {
        EXPECT_THROW(ParseValue(row.parameter(), row.text), Error) << row.text;
    }
}

} // namespace
} // namespace Kerovane::Host
