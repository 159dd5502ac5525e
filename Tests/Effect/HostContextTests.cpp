#include "EffectFixture.h"
#include "FaultyHost.h"
#include "Support/EglHost.h"

#include <functional>

namespace Kerovane::TestSupport {

namespace {

class HostContext : public EffectFixture {};

TEST_F(HostContext, IsCurrentAgainAfterEveryCommand) {
    const Host::World input = SmoothPicture(32, 32, true);
    Host::World output(Host::Depth::Bits8, 32, 32);
    FaultyHost host(mSession);
    struct {
        const char* name;
        std::function<PF_Err()> command;
        PF_Err result;
    } const kCases[] = {
        {"about", [&] { return mSession.call(PF_Cmd_ABOUT); }, 0},
        {"frame", [&] { return mSession.render(input, output); }, 0},
        {"second frame", [&] { return mSession.render(input, output); }, 0},
        {"failing frame",
         [&] {
             host.refuseSuite("PF Handle Suite");
             return mSession.render(input, output);
         },
         PF_Err_BAD_CALLBACK_PARAM},
        {"set-down", [&] { return mSession.call(PF_Cmd_GLOBAL_SETDOWN); }, 0},
        {"frame without set-up", [&] { return mSession.render(input, output); },
         PF_Err_BAD_CALLBACK_PARAM},
        {"set-up", [&] { return mSession.call(PF_Cmd_GLOBAL_SETUP); }, 0},
    };
    const EglHost hostContext;
    hostContext.makeCurrent();
    for (const auto& [name, command, result] : kCases) {
        EXPECT_EQ(command(), result) << name;
        EXPECT_EQ(Platform::CurrentEglBinding(), hostContext.binding()) << name;
    }
}

} // namespace

} // namespace Kerovane::TestSupport
