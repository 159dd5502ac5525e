#include "Host/Session/EffectSession.h"
#include "Host/Text/Error.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace Kerovane::Host {
namespace {

class EffectSessionTest : public testing::Test {
protected:
    EffectSessionTest() { mSession.call(PF_Cmd_PARAMS_SETUP); }

    PF_Err add(A_long id, PF_ParamIndex index = -1) const {
        PF_ParamDef definition{};
        definition.uu.id = id;
        definition.param_type = PF_Param_CHECKBOX;
        return mIn.inter.add_param(mIn.effect_ref, index, &definition);
    }

    PF_Err checkout(PF_ParamIndex index, A_long time, PF_ParamDef* param) const {
        return mIn.inter.checkout_param(mIn.effect_ref, index, time, 1, 24, param);
    }

    EffectSession mSession{FAKE_EFFECT};
    PF_InData& mIn = mSession.inData();
};

TEST_F(EffectSessionTest, KeepsParametersInTheOrderOfAdding) {
    const std::vector<Parameter>& parameters = mSession.parameters();
    ASSERT_EQ(parameters.size(), 9U);
    EXPECT_EQ(parameters.front().type(), PF_Param_LAYER);
    for (std::size_t index = 1; index < parameters.size(); ++index) {
        EXPECT_EQ(parameters[index].id(), static_cast<A_long>(index));
    }
    EXPECT_EQ(FindParameter(parameters, 8), FindParameter(parameters, "Invert"));
    EXPECT_EQ(FindParameter(parameters, "nothing"), nullptr);

    mSession.call(PF_Cmd_PARAMS_SETUP);
    EXPECT_EQ(parameters.size(), 9U) << "the list starts anew with each set-up";
}

TEST_F(EffectSessionTest, InsertsAtAnIndexAndRefusesDuplicates) {
    EXPECT_EQ(add(50, 2), PF_Err_NONE);
    EXPECT_EQ(mSession.parameters()[2].id(), 50);
    EXPECT_EQ(add(50), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(mSession.refusal(), "the disk id 50 is used twice");
    EXPECT_EQ(add(51, 0), PF_Err_INVALID_INDEX) << "the layer stays first";
    EXPECT_EQ(add(51, 11), PF_Err_INVALID_INDEX);
    EXPECT_EQ(add(51, 10), PF_Err_NONE);
}

TEST_F(EffectSessionTest, ChecksOutValuesAtATime) {
    PF_ParamDef param{};
    ASSERT_EQ(checkout(1, 0, &param), PF_Err_NONE);
    EXPECT_EQ(param.u.sd.value, 3) << "the default if nothing is set";
    mSession.values().set(1, [](Time time) { return 10 * time.seconds(); });
    checkout(1, 48, &param);
    EXPECT_EQ(param.u.sd.value, 20);
    checkout(1, 36, &param);
    EXPECT_EQ(param.u.sd.value, 15);
}

TEST_F(EffectSessionTest, CountsCheckoutsAndIgnoresUnmatchedCheckins) {
    PF_ParamDef never{};
    PF_ParamDef out{};
    EXPECT_EQ(mIn.inter.checkin_param(mIn.effect_ref, &never), PF_Err_NONE);
    EXPECT_EQ(mSession.liveCounts().checkouts, 0);
    checkout(2, 0, &out);
    EXPECT_EQ(mSession.liveCounts().checkouts, 1);
    mIn.inter.checkin_param(mIn.effect_ref, &out);
    mIn.inter.checkin_param(mIn.effect_ref, &out);
    EXPECT_EQ(mSession.liveCounts().checkouts, 0);
}

TEST_F(EffectSessionTest, RefusesInvalidCheckouts) {
    PF_ParamDef param{};
    EXPECT_EQ(checkout(9, 0, &param), PF_Err_INVALID_INDEX);
    EXPECT_EQ(checkout(-1, 0, &param), PF_Err_INVALID_INDEX);
    EXPECT_EQ(checkout(1, 0, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(mIn.inter.checkout_param(mIn.effect_ref, 1, 0, 1, 0, &param),
              PF_Err_BAD_CALLBACK_PARAM)
        << "no time has a scale of 0";
    EXPECT_EQ(mSession.liveCounts().checkouts, 0);
}

TEST_F(EffectSessionTest, PassesCommandsAndRecordsUnchanged) {
    mSession.outData().out_flags = 0x5a5a;
    EXPECT_EQ(mSession.call(PF_Cmd_SEQUENCE_SETUP), PF_Err_NONE);
    EXPECT_EQ(mSession.outData().out_flags, 0x5a5a);
    EXPECT_EQ(mSession.call(PF_Cmd_ABOUT), PF_Err_NONE);
    EXPECT_STREQ(mSession.outData().return_msg, "Fake\rAn effect for tests");
}

TEST(EffectModule, RefusesFilesWithoutTheEntryPoint) {
    EXPECT_THROW(EffectSession(""), Error) << "which the loader takes for the program itself";
    EXPECT_THROW(EffectSession("/"), Error);
    EXPECT_THROW(EffectSession("/nowhere/Effect.so"), Error);
    EXPECT_THROW(EffectSession("libm.so.6"), Error) << "no search path is consulted";
    EXPECT_THROW(EffectSession("/proc/self/exe"), Error);
}

} // namespace
} // namespace Kerovane::Host
