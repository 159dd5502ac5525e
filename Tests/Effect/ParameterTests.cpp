#include "Tests/Effect/EffectFixture.h"

#include <map>
#include <sstream>
#include <string>
#include <tuple>

namespace Kerovane::TestSupport {

namespace {

using Parameters = EffectFixture;

/// Returns a line with number, type, name, label, default, range, slider range, decimals, flags and
/// choices.
std::string LineOf(const Host::Parameter& parameter) {
    const std::map<PF_ParamType, const char*> types = {
        {PF_Param_LAYER, "layer"},        {PF_Param_SLIDER, "slider"},
        {PF_Param_FIX_SLIDER, "fixed"},   {PF_Param_FLOAT_SLIDER, "float"},
        {PF_Param_ANGLE, "angle"},        {PF_Param_CHECKBOX, "checkbox"},
        {PF_Param_POPUP, "popup"},        {PF_Param_GROUP_START, "group"},
        {PF_Param_GROUP_END, "group end"}};
    const auto& [valid, slider] = std::tie(parameter.valid, parameter.slider);
    std::ostringstream line;
    line << parameter.id() << ' ' << types.at(parameter.type()) << " '" << parameter.name << "' '"
         << parameter.label << "' " << parameter.defaultValue << " [" << valid.min << ' '
         << valid.max << "] [" << slider.min << ' ' << slider.max << "] " << parameter.precision
         << (parameter.isPercent() ? " %" : "") << (parameter.definition.ui_flags != 0 ? " ui" : "")
         << (parameter.definition.flags == PF_ParamFlag_SUPERVISE ? " supervised" : "");
    for (const std::string& choice : parameter.choices) {
        line << ", " << choice;
    }
    return line.str() + '\n';
}

TEST_F(Parameters, AreDeclaredAsListed) {
    std::string listing;
    for (const Host::Parameter& parameter : mSession.parameters()) {
        listing += LineOf(parameter);
    }
    EXPECT_EQ(listing, R"(0 layer '' '' 0 [0 0] [0 0] 0
1 popup 'Shape Type' '' 1 [1 2] [1 2] 0, Square, Triangle
2 slider 'Size' '' 10 [2 3000] [2 500] 0
3 float 'Ratio' '' 1 [0.01 10] [0.01 10] 1
4 fixed 'Size Random' '' 0 [0 100] [0 100] 1 %
5 slider 'Size Level' '' 3 [1 5] [1 5] 0
6 slider 'Size Random Seed' '' 0 [0 5000] [0 5000] 0
7 fixed 'Dissolve' '' 0 [0 100] [0 100] 1 %
8 slider 'Dissolve Random Seed' '' 0 [0 5000] [0 5000] 0
9 popup 'Transition Type' '' 1 [1 3] [1 3] 0 supervised, Linear, Radial In, Radial Out
10 fixed 'Transition Progress' '' 0 [0 100] [0 100] 1 %
11 slider 'Feather' '' 250 [0 5000] [0 500] 0
12 angle 'Direction' '' 0 [-32768 32767] [-32768 32767] 1
13 group '' '' 0 [0 0] [0 0] 0
14 group end '' '' 0 [0 0] [0 0] 0
15 checkbox '' 'Use Alpha' 1 [0 1] [0 1] 0 supervised
)");
    EXPECT_EQ(mSession.outData().num_params, 16);
    const PF_ParamDefUnion& ratio = mSession.parameters()[3].definition.u;
    EXPECT_EQ(ratio.fs_d.value, 1.0);
    EXPECT_EQ(ratio.fs_d.curve_tolerance, 0.05F);
    EXPECT_EQ(mSession.parameters()[2].definition.u.sd.value, 10);
}

} // namespace

} // namespace Kerovane::TestSupport
