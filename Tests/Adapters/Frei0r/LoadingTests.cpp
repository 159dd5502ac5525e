#include "AE_Effect.h"
#include "Tests/Adapters/Frei0r/Frei0rHost.h"
#include "Tests/Support/EglHost.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>

namespace Kerovane::TestSupport {

namespace {

namespace fs = std::filesystem;

constexpr int kParametersOfFakeEffect = 7; // including the choice of the renderer

/// An installation whose effect records the commands that it gets.
class Loading : public testing::Test {
protected:
    Loading() { setenv("FAKE_EFFECT_TRACE", (mTraces / "trace").c_str(), 1); }
    ~Loading() override { unsetenv("FAKE_EFFECT_TRACE"); }

    std::string commands() const { return mTraces.contentOf("trace"); }

    TemporaryFolder mTraces;
    Installation mInstallation{FAKE_EFFECT};
};

std::string Commands(std::initializer_list<PF_Cmd> commands) {
    std::string text;
    for (const PF_Cmd command : commands) {
        text += std::to_string(command) + ' ';
    }
    return text;
}

TEST_F(Loading, SetsTheEffectUpAtTheFirstFrame) {
    const std::string untilFrame =
        Commands({PF_Cmd_PARAMS_SETUP, PF_Cmd_GLOBAL_SETUP, PF_Cmd_PARAMS_SETUP, PF_Cmd_RENDER});
    {
        const Frei0rHost host(mInstallation.module());
        Frei0rInstance(host, 720, 576).get(0); // MLT makes an instance for the defaults
        Frei0rInstance instance(host, 8, 8);
        EXPECT_EQ(commands(), Commands({PF_Cmd_PARAMS_SETUP}));
        instance.rendered(MotleyPicture(8, 8));
        EXPECT_EQ(commands(), untilFrame);
        Frei0rInstance(host, 8, 8).rendered(MotleyPicture(8, 8));
    }
    EXPECT_EQ(commands(), untilFrame + Commands({PF_Cmd_RENDER, PF_Cmd_GLOBAL_SETDOWN}));
}

TEST_F(Loading, KeepsTheEffectUntilTheLastOfSeveralLoadsIsGone) {
    const Pixels input = MotleyPicture(8, 8);
    const std::string setDown = Commands({PF_Cmd_GLOBAL_SETDOWN});
    auto first = std::make_unique<Frei0rHost>(mInstallation.module());
    auto second = std::make_unique<Frei0rHost>(mInstallation.module());
    Frei0rInstance(*first, 8, 8).rendered(input);
    first.reset();
    Frei0rInstance(*second, 8, 8).rendered(input);
    EXPECT_EQ(commands().find(setDown), std::string::npos);
    second.reset();
    EXPECT_TRUE(commands().ends_with(setDown));

    const Frei0rHost again(mInstallation.module());
    EXPECT_EQ(Frei0rInstance(again, 8, 8).rendered(input), input);
}

TEST_F(Loading, UnloadsWithInstancesAliveAndMoreOftenThanLoaded) {
    const Pixels input = MotleyPicture(8, 8);
    auto host = std::make_unique<Frei0rHost>(mInstallation.module());
    Frei0rInstance late(*host, 8, 8);
    EXPECT_EQ(late.rendered(input), input);
    host->deinit();
    EXPECT_EQ(late.rendered(input), input) << "after f0r_deinit";
    host->deinit();
    host->init();
}

TEST_F(Loading, FindsTheEffectFromAnyWorkingFolder) {
    const fs::path before = fs::current_path();
    const TemporaryFolder links;
    fs::create_symlink(mInstallation.module(), links / "tesselune.so");
    for (const fs::path& path : {fs::path("./lib/frei0r-1/tesselune.so"), links / "tesselune.so"}) {
        fs::current_path(mInstallation.folder());
        const Frei0rHost host(path);
        fs::current_path("/");
        EXPECT_EQ(host.info().num_params, kParametersOfFakeEffect) << path;
    }
    fs::current_path(before);
}

TEST(HostContext, StaysCurrentAcrossFrames) {
    const EglHost context;
    context.makeCurrent();
    {
        const Frei0rHost host;
        Frei0rInstance instance(host, 16, 16);
        EXPECT_NE(instance.rendered(MotleyPicture(16, 16)), MotleyPicture(16, 16));
        EXPECT_EQ(Platform::CurrentEglBinding(), context.binding());
    }
    EXPECT_EQ(Platform::CurrentEglBinding(), context.binding());
}

} // namespace

} // namespace Kerovane::TestSupport
