#include "Host/Parameters/OptionNames.h"

#include "Tests/Host/Parameters/SampleParameters.h"
#include "Tests/Support/ErrorText.h"

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

TEST(OptionNames, FindTheirParameters) {
    const std::vector<Parameter> parameters = Parameters();
    const std::vector<std::string> options = OptionNames(parameters, {"depth"});
    struct Row {
        const char* name;
        std::size_t index;
    };
    constexpr Row kRows[] = {{"amount-px-4", 3}, {"Depth", 1}, {"6", 5}, {"use-alpha", 5}};
    for (const Row& row : kRows) {
        EXPECT_EQ(IndexOfParameter(parameters, options, row.name), row.index) << row.name;
    }
    for (const char* name : {"Group", "3", "", "8"}) {
        EXPECT_NE(ErrorOf([&] { IndexOfParameter(parameters, options, name); }), "") << name;
    }
}

} // namespace
} // namespace Kerovane::Host
