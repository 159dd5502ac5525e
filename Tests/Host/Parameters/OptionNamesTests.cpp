#include "Host/Parameters/OptionNames.h"

#include "Tests/Host/Parameters/SampleParameters.h"

#include <gtest/gtest.h>

namespace Kerovane::Host {
namespace {

Parameter Named(const char* name, A_long id, Parameter parameter = Slider()) {
    parameter.name = name;
    parameter.definition.uu.id = id;
    return parameter;
}

std::vector<Parameter> Parameters() {
    PF_ParamDef group{};
    group.param_type = PF_Param_GROUP_START;
    return {Named("Amount (px)", 1), Named("Depth", 2), Named("Group", 3, MakeParameter(group)),
            Named("amount px", 4),   Named("***", 5),   Named("", 6, Checkbox()),
            Named("Depth 2", 7)};
}

TEST(OptionNames, AreUnique) {
    const std::vector<std::string> names{"amount-px",   "depth-2",   "",         "amount-px-4",
                                         "parameter-5", "use-alpha", "depth-2-7"};
    EXPECT_EQ(OptionNames(Parameters(), {"depth"}), names);
}

} // namespace
} // namespace Kerovane::Host
