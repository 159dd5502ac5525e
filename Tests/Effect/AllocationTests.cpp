#include "Tests/Effect/CommandWalk.h"

#include <cstdlib>
#include <new>
#include <string_view>

#include <dlfcn.h>

namespace {

/// Makes the `nth` allocation that `module` itself requests fail (1: the first, 0: none). `count`
/// counts these allocations.
struct {
    std::string_view module = {};
    int nth = 0;
    int count = 0;
} mFault;

bool IsInTheModule(const void* address) {
    Dl_info info{};
    return dladdr(address, &info) != 0 && info.dli_fname == mFault.module;
}

} // namespace

// Replace the standard library's operators, for the module too. Drivers and other libraries always
// get memory.

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

// Not inlined, because the compiler would see free() called on memory of operator new and warn.

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace Kerovane::TestSupport {

namespace {

class Allocations : public CommandWalk {
protected:
    Allocations() { mHostContext.makeCurrent(); }

    /// Sends the command with its `nth` allocation failing. Returns false if the command makes
    /// fewer than `nth` allocations.
    static bool failsWithout(const Command& command, int nth) {
        mFault = {.module = GetParam().file, .nth = nth, .count = 0};
        bool fails = false;
        try {
            EXPECT_EQ(command.send(), PF_Err_NONE);
        } catch (const std::bad_alloc&) {
            fails = true;
        }
        mFault = {};
        return fails;
    }
};

TEST_EVERY_MODULE(Allocations);

TEST_P(Allocations, LeakNothingIfTheyFail) {
    int faults = 0;
    for (const Command& command : commands()) {
        SCOPED_TRACE(command.name);
        int failed = 0;
        bool fails = true;
        while (fails) {
            SCOPED_TRACE(failed + 1);
            expectNothingLeft(command, [&] { fails = failsWithout(command, failed + 1); });
            failed += fails ? 1 : 0;
        }
        faults += failed;
    }
    EXPECT_GT(faults, 40) << "the module's allocations are not met";
    RecordProperty("faults", faults);
    expectNothingAfterSetdown();
}

} // namespace

} // namespace Kerovane::TestSupport
