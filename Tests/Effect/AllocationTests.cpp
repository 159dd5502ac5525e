#include "EffectFixture.h"
#include "Support/EglHost.h"
#include "Support/LiveGLObjects.h"

#include <dlfcn.h>

#include <cstdlib>
#include <functional>
#include <new>
#include <string_view>

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

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace Kerovane::TestSupport {

namespace {

class Allocations : public EffectFixture {
protected:
    /// Runs `command` with its first allocation failing, then its second, until it passes. Returns
    /// how many failed. `check` follows each failure, `before` precedes each run.
    static int failEach(const std::function<void()>& before, const std::function<PF_Err()>& command,
                        const std::function<void()>& check) {
        for (int nth = 1;; ++nth) {
            SCOPED_TRACE(nth);
            before();
            bool threw = false;
            mFault = {.nth = nth, .count = 0};
            try {
                EXPECT_EQ(command(), PF_Err_NONE);
            } catch (const std::bad_alloc&) {
                threw = true;
            }
            mFault = {};
            check();
            if (!threw) {
                return nth - 1;
            }
        }
    }
};

TEST_F(Allocations, ThatFailInAFrameLeaveNothingBehind) {
    const EglHost hostContext;
    hostContext.makeCurrent();
    for (const Host::Depth depth : {Host::Depth::Bits8, Host::Depth::Float32}) {
        const Host::World input = AtDepth(SmoothPicture(20, 10, true), depth);
        const Host::World expected = rendered(input);
        const LiveGLObjects live;
        Host::World output(depth, 20, 10);
        const int failures =
            failEach([] {}, [&] { return mSession.render(input, output); },
                     [&] {
                         EXPECT_EQ(Platform::CurrentEglBinding(), hostContext.binding());
                         EXPECT_EQ(mSession.liveCounts(), Host::LiveCounts{});
                         EXPECT_TRUE(live.counts().empty());
                         EXPECT_TRUE(SamePixels(rendered(input), expected));
                     });
        EXPECT_GT(failures, 3) << "the effect's allocations were not met";
    }
}

TEST_F(Allocations, ThatFailInAFirstFrameDoNotSpoilTheNext) {
    const EglHost hostContext;
    hostContext.makeCurrent();
    const Host::World input = SmoothPicture(20, 10, true);
    const Host::World expected = rendered(input);
    Host::World output(Host::Depth::Bits8, 20, 10);
    const int failures = failEach(
        [this] {
            globalSetdown();
            globalSetup();
        },
        [&] { return mSession.render(input, output); },
        [&] {
            EXPECT_EQ(Platform::CurrentEglBinding(), hostContext.binding());
            EXPECT_EQ(mSession.liveCounts(), Host::LiveCounts{});
            EXPECT_TRUE(SamePixels(rendered(input), expected));
        });
    EXPECT_GT(failures, 20);
}

TEST_F(Allocations, ThatFailInSetUpCanBeTriedAgain) {
    const EglHost hostContext;
    hostContext.makeCurrent();
    const Host::World input = SmoothPicture(20, 10, true);
    const Host::World expected = rendered(input);
    const int failures =
        failEach([this] { globalSetdown(); }, [this] { return mSession.call(PF_Cmd_GLOBAL_SETUP); },
                 [&] {
                     EXPECT_EQ(Platform::CurrentEglBinding(), hostContext.binding());
                     EXPECT_EQ(mSession.liveCounts(), Host::LiveCounts{});
                     globalSetup();
                     EXPECT_TRUE(SamePixels(rendered(input), expected));
                 });
    EXPECT_GT(failures, 1);
}

} // namespace

} // namespace Kerovane::TestSupport
