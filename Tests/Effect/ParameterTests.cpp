#include "Tests/Effect/EffectFixture.h"

#include <string>
#include <vector>

namespace Kerovane::TestSupport {

namespace {

using Parameters = EffectFixture;

TEST_F(Parameters, EndUpInTheHostsListAsDeclared) {
    struct Row {
        PF_ParamType type;
        std::string name;
        double byDefault, validMin, validMax, sliderMin, sliderMax;
        PF_ParamFlags flags = 0;
    };
    const std::vector<Row> kRows = {
        {PF_Param_POPUP, "Shape Type", 1, 1, 2, 1, 2},
        {PF_Param_SLIDER, "Size", 10, 2, 3000, 2, 500},
        {PF_Param_FLOAT_SLIDER, "Ratio", 1, 0.01, 10, 0.01, 10},
        {PF_Param_FIX_SLIDER, "Size Random", 0, 0, 100, 0, 100},
        {PF_Param_SLIDER, "Size Level", 3, 1, 5, 1, 5},
        {PF_Param_SLIDER, "Size Random Seed", 0, 0, 5000, 0, 5000},
        {PF_Param_FIX_SLIDER, "Dissolve", 0, 0, 100, 0, 100},
        {PF_Param_SLIDER, "Dissolve Random Seed", 0, 0, 5000, 0, 5000},
        {PF_Param_POPUP, "Transition Type", 1, 1, 3, 1, 3, PF_ParamFlag_SUPERVISE},
        {PF_Param_FIX_SLIDER, "Transition Progress", 0, 0, 100, 0, 100},
        {PF_Param_SLIDER, "Feather", 250, 0, 5000, 0, 500},
    };
    const std::vector<Host::Parameter>& parameters = mSession.parameters();
    EXPECT_EQ(mSession.outData().num_params, 16);
    ASSERT_EQ(parameters.size(), 16U);
    EXPECT_EQ(parameters[0].type(), PF_Param_LAYER);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        EXPECT_EQ(parameters[i].id(), static_cast<A_long>(i));
    }
    for (std::size_t i = 0; i < kRows.size(); ++i) {
        const Host::Parameter& parameter = parameters[i + 1];
        const Row& row = kRows[i];
        SCOPED_TRACE(row.name);
        EXPECT_EQ(parameter.type(), row.type);
        EXPECT_EQ(parameter.name, row.name);
        EXPECT_EQ(parameter.defaultValue, row.byDefault);
        EXPECT_EQ(parameter.valid.min, row.validMin);
        EXPECT_EQ(parameter.valid.max, row.validMax);
        EXPECT_EQ(parameter.slider.min, row.sliderMin);
        EXPECT_EQ(parameter.slider.max, row.sliderMax);
        EXPECT_EQ(parameter.definition.flags, row.flags);
        EXPECT_EQ(parameter.definition.ui_flags, 0);
    }
}

TEST_F(Parameters, HaveTheFieldsThatTheTableDoesNotShow) {
    const auto& parameters = mSession.parameters();
    const auto field = [&](std::size_t index) -> const PF_ParamDefUnion& {
        return parameters[index].definition.u;
    };
    EXPECT_EQ(parameters[1].choices, (std::vector<std::string>{"Square", "Triangle"}));
    EXPECT_EQ(parameters[9].choices,
              (std::vector<std::string>{"Linear", "Radial In", "Radial Out"}));
    EXPECT_EQ(field(2).sd.value, 10);
    EXPECT_EQ(field(3).fs_d.value, 1.0);
    EXPECT_EQ(field(3).fs_d.valid_min, 0.01F);
    EXPECT_EQ(field(3).fs_d.precision, 1);
    EXPECT_EQ(field(3).fs_d.curve_tolerance, 0.05F);
    for (const std::size_t percent : {4U, 7U, 10U}) {
        EXPECT_EQ(field(percent).fd.valid_max, 0x640000);
        EXPECT_EQ(field(percent).fd.precision, 1);
        EXPECT_EQ(field(percent).fd.display_flags, PF_ValueDisplayFlag_PERCENT);
    }
    EXPECT_EQ(parameters[12].type(), PF_Param_ANGLE);
    EXPECT_EQ(parameters[12].name, "Direction");
    EXPECT_EQ(parameters[12].defaultValue, 0.0);
    EXPECT_EQ(parameters[13].type(), PF_Param_GROUP_START);
    EXPECT_EQ(parameters[14].type(), PF_Param_GROUP_END);
    EXPECT_EQ(parameters[15].type(), PF_Param_CHECKBOX);
    EXPECT_EQ(parameters[15].name, "");
    EXPECT_EQ(parameters[15].label, "Use Alpha");
    EXPECT_EQ(parameters[15].defaultValue, 1.0);
    EXPECT_EQ(parameters[15].definition.flags, PF_ParamFlag_SUPERVISE);
}

} // namespace

} // namespace Kerovane::TestSupport
