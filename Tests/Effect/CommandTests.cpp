#include "Platform/OpenGL/HostContext.h"
#include "Tests/Effect/EffectFixture.h"
#include "Tests/Effect/FaultyHost.h"
#include "Tests/Support/LiveGLObjects.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <memory>

namespace Kerovane::TestSupport {

namespace {

using Commands = EffectFixture;

TEST_F(Commands, UnusedCommandsDoNothing) {
    FaultyHost host(mSession);
    for (const PF_Cmd command :
         {static_cast<int>(PF_Cmd_UNUSED_0), static_cast<int>(PF_Cmd_SEQUENCE_SETUP),
          static_cast<int>(PF_Cmd_SEQUENCE_RESETUP), static_cast<int>(PF_Cmd_SEQUENCE_FLATTEN),
          static_cast<int>(PF_Cmd_SEQUENCE_SETDOWN), static_cast<int>(PF_Cmd_DO_DIALOG),
          static_cast<int>(PF_Cmd_FRAME_SETUP), static_cast<int>(PF_Cmd_FRAME_SETDOWN),
          static_cast<int>(PF_Cmd_USER_CHANGED_PARAM), static_cast<int>(PF_Cmd_UPDATE_PARAMS_UI),
          static_cast<int>(PF_Cmd_EVENT), 1000, -1}) {
        std::memset(&mSession.outData(), 0x5a, sizeof(PF_OutData));
        const PF_OutData before = mSession.outData();
        host.recover();
        EXPECT_EQ(mSession.call(command), PF_Err_NONE) << command;
        EXPECT_EQ(host.calls(), HostCallCounts{}) << command;
        // Compares all bytes, padding included: both records were filled with the same mark.
        EXPECT_EQ(std::memcmp(static_cast<const void*>(&before),
                              static_cast<const void*>(&mSession.outData()), sizeof before),
                  0)
            << command;
    }
    mSession.outData() = {};
}

TEST_F(Commands, AboutNamesTheEffectAndItsVersion) {
    EXPECT_EQ(mSession.call(PF_Cmd_ABOUT), PF_Err_NONE);
    EXPECT_STREQ(mSession.outData().return_msg, "Tesselune v1.0\rTesselune");
}

TEST_F(Commands, GlobalSetupDeclaresVersionAndFlagsEvenIfItFails) {
    globalSetdown();
    mSession.outData().out_flags = PF_OutFlag_I_EXPAND_BUFFER;
    mSession.outData().out_flags2 = PF_OutFlag2_FLOAT_COLOR_AWARE;
    {
        FaultyHost host(mSession);
        host.refuseSuite("AEGP Utility Suite");
        EXPECT_EQ(mSession.call(PF_Cmd_GLOBAL_SETUP), PF_Err_BAD_CALLBACK_PARAM);
    }
    EXPECT_EQ(mSession.outData().my_version, 524289U);
    EXPECT_EQ(mSession.outData().out_flags, 33587202 | PF_OutFlag_I_EXPAND_BUFFER);
    EXPECT_EQ(mSession.outData().out_flags2, 0);
    Host::World output(Host::Depth::Bits8, 8, 8);
    EXPECT_EQ(mSession.render(SmoothPicture(8, 8, true), output), PF_Err_BAD_CALLBACK_PARAM);
    globalSetup();
}

int sDisposed = 0;

TEST_F(Commands, OnlyTheFirstGlobalSetdownFreesHandles) {
    const PF_UtilCallbacks* utilities = mSession.inData().utils;
    PF_UtilCallbacks counting = *utilities;
    counting.host_dispose_handle = [](PF_Handle) { ++sDisposed; };
    mSession.inData().utils = &counting;
    PF_Handle global = utilities->host_new_handle(8);
    mSession.inData().global_data = mSession.outData().global_data = global;
    mSession.inData().sequence_data = mSession.outData().sequence_data = global;
    sDisposed = 0;
    globalSetdown();
    EXPECT_EQ(sDisposed, 2);
    EXPECT_EQ(mSession.outData().sequence_data, nullptr);
    EXPECT_EQ(mSession.outData().global_data, global) << "the effect leaves it to the host";
    globalSetdown();
    EXPECT_EQ(sDisposed, 2);
    {
        FaultyHost faulty(mSession);
        faulty.refuseSuite("AEGP Utility Suite");
        EXPECT_EQ(mSession.call(PF_Cmd_GLOBAL_SETUP), PF_Err_BAD_CALLBACK_PARAM);
    }
    globalSetdown();
    EXPECT_EQ(sDisposed, 4) << "the first one after a set-up, though that failed";

    utilities->host_dispose_handle(global);
    mSession.inData().global_data = mSession.inData().sequence_data = nullptr;
    mSession.inData().utils = const_cast<PF_UtilCallbacks*>(utilities);
    globalSetup();
}

TEST_F(Commands, GlobalSetdownLeavesNoContextToAHostThatHadNone) {
    rendered(SmoothPicture(40, 30, true));
    EXPECT_NE(Platform::CurrentEglBinding(), Platform::EglBinding());
    globalSetdown();
    EXPECT_EQ(Platform::CurrentEglBinding(), Platform::EglBinding());
}

TEST_F(Commands, RenderIsRefusedBetweenSetdownAndSetup) {
    const Host::World input = SmoothPicture(40, 30, true);
    const Host::World before = rendered(input);
    globalSetdown();
    {
        const LiveGLObjects live;
        Host::World output(Host::Depth::Bits8, 40, 30);
        EXPECT_EQ(mSession.render(input, output), PF_Err_BAD_CALLBACK_PARAM);
        EXPECT_TRUE(live.counts().empty());
        EXPECT_TRUE(SamePixels(output, Host::World(Host::Depth::Bits8, 40, 30)));
    }
    globalSetup();
    EXPECT_TRUE(SamePixels(rendered(input), before));
}

TEST_F(Commands, EmptyFrameRendersDirectlyAfterSetup) {
    globalSetdown();
    globalSetup();
    rendered(Host::World(Host::Depth::Bits8, 0, 30));
}

class Modules : public testing::TestWithParam<Module> {};

TEST_EVERY_MODULE(Modules);

TEST_P(Modules, ExportOnlyTheirEntryPoint) {
    const std::string command = std::string(NM) + " -D --defined-only " + GetParam().file;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> output(
        popen(command.c_str(), "r"), pclose); // NOLINT(cert-env33-c): the command is ours
    ASSERT_NE(output, nullptr);
    std::string symbols;
    std::array<char, 256> line{};
    while (std::fgets(line.data(), line.size(), output.get()) != nullptr) {
        symbols += std::strrchr(line.data(), ' ') + 1;
    }
    EXPECT_EQ(symbols, "EntryPointFunc\n");
}

} // namespace

} // namespace Kerovane::TestSupport
