#include "Tests/Effect/EffectFixture.h"
#include "Tests/Support/EglHost.h"
#include "Tests/Support/LiveGLObjects.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include <dlfcn.h>

namespace {

/// Which of the effect's own allocations fails next, the first being 1; 0 for none.
struct {
    int nth = 0;
    int count = 0;
} mFault;

bool IsInTheModule(const void* address) {
    Dl_info info{};
    return dladdr(address, &info) != 0 && std::string_view(info.dli_fname) == TESSELUNE_MODULE;
}

} // namespace

// In place of the library's, for the module too. Drivers and other libraries always get memory.

void* operator new(std::size_t size) {
    if (mFault.nth != 0 && IsInTheModule(__builtin_return_address(0)) &&
        ++mFault.count == mFault.nth) {
        throw std::bad_alloc();
    }
    if (void* memory = std::malloc(size != 0 ? size : 1)) {
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size != 0 ? size : 1);
}

// Not inlined, or the compiler sees free() meet memory of new and warns.

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace Kerovane::TestSupport {

namespace {

constexpr Host::Depth kDepths[] = {Host::Depth::Bits8, Host::Depth::Bits16, Host::Depth::Float32};

Host::World Input(Host::Depth depth) {
    return AtDepth(SmoothPicture(20, 10, true), depth);
}

struct Command {
    std::string name;
    std::function<void()> before; ///< brings the effect to where the command is sent
    std::function<PF_Err()> send;
    std::function<void()> after; ///< brings it to where it renders
    int allocations;             ///< at least so many are met
};

class Allocations : public EffectFixture {
protected:
    Allocations() { mHostContext.makeCurrent(); }

    std::vector<Command> commands();

    /// Sends the command with its `nth` allocation failing; false where it has fewer.
    static bool failsWithout(const Command& command, int nth) {
        mFault = {.nth = nth, .count = 0};
        try {
            EXPECT_EQ(command.send(), PF_Err_NONE);
        } catch (const std::bad_alloc&) {
            mFault = {};
            return true;
        }
        mFault = {};
        return false;
    }

    std::vector<Host::World> frames() {
        std::vector<Host::World> frames;
        for (const Host::Depth depth : kDepths) {
            frames.push_back(rendered(Input(depth)));
        }
        return frames;
    }

    EglHost mHostContext;
    LiveGLObjects mLive; ///< nothing is made before the first frame
};

std::vector<Command> Allocations::commands() {
    const auto nothing = [] {};
    const auto setDown = [this] { globalSetdown(); };
    const auto setUp = [this] { globalSetup(); };
    const auto setUpAnew = [this] {
        globalSetdown();
        globalSetup();
    };
    const auto call = [this](PF_Cmd command) {
        return [=, this] { return mSession.call(command); };
    };
    std::vector<Command> commands = {
        {"set-down before any frame", nothing, call(PF_Cmd_GLOBAL_SETDOWN), setUpAnew, 1},
        {"about", nothing, call(PF_Cmd_ABOUT), nothing, 0},
        {"parameters", nothing, call(PF_Cmd_PARAMS_SETUP), nothing, 0},
        {"set-up", setDown, call(PF_Cmd_GLOBAL_SETUP), setUp, 2},
        {"set-down", nothing, call(PF_Cmd_GLOBAL_SETDOWN), setUpAnew, 0},
    };
    const auto frame = [this](Host::Depth depth) {
        return [this, depth] {
            Host::World output(depth, 20, 10);
            return mSession.render(Input(depth), output);
        };
    };
    commands.push_back({"first frame", setUpAnew, frame(Host::Depth::Float32), nothing, 20});
    for (const Host::Depth depth : kDepths) {
        commands.push_back({"frame at " + std::to_string(static_cast<int>(depth)) + " bits",
                            nothing, frame(depth), nothing, 4});
    }
    return commands;
}

TEST_F(Allocations, ThatFailInAnyCommandLeaveNothingBehind) {
    std::vector<Host::World> expected;
    std::map<std::string, int> expectedObjects;
    int faults = 0;
    for (const Command& command : commands()) {
        SCOPED_TRACE(command.name);
        bool failed = true;
        int nth = 0;
        while (failed) {
            ++nth;
            SCOPED_TRACE(nth);
            command.before();
            failed = failsWithout(command, nth);
            faults += failed ? 1 : 0;
            EXPECT_EQ(Platform::CurrentEglBinding(), mHostContext.binding());
            EXPECT_EQ(mSession.liveCounts(), Host::LiveCounts{});
            command.after();
            const std::vector<Host::World> pictures = frames();
            if (expected.empty()) {
                expected = frames();
                expectedObjects = mLive.counts();
            }
            EXPECT_TRUE(std::ranges::equal(pictures, expected, SamePixels));
            EXPECT_EQ(mLive.counts(), expectedObjects);
        }
        EXPECT_GT(nth, command.allocations) << "the effect's allocations were not met";
    }
    RecordProperty("faults", faults);
    globalSetdown();
    EXPECT_EQ(mLive.counts(), (std::map<std::string, int>{}));
}

} // namespace

} // namespace Kerovane::TestSupport
