#include "Benchmarks/FrameMemory/AllocationMeter.h"

#include <link.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <mutex>
#include <new>
#include <stdexcept>
#include <string>

// The C library's own allocation functions, called by the replacements below.
// NOLINTBEGIN: the C library fixes these names
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}
// NOLINTEND

namespace Kerovane::Benchmarks {

namespace {

/// The address range of a library or the program.
struct Range {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;

    bool contains(const void* address) const {
        const auto value = reinterpret_cast<std::uintptr_t>(address);
        return begin <= value && value < end;
    }
};

struct Block {
    void* memory = nullptr; ///< null if this element is free
    std::size_t size = 0;
};

/// Adds up live allocations. Allocates nothing itself.
class Meter {
public:
    void begin(const Range& module, const Range& program) {
        const std::lock_guard lock(mMutex);
        mOwners = {module, program};
        mBlocks = {};
        mBytes = mPeak = 0;
        mIsRunning = true;
    }

    /// Stops the measurement and returns the peak in bytes.
    std::size_t end() {
        const std::lock_guard lock(mMutex);
        mIsRunning = false;
        return mPeak;
    }

    /// Records a block that code at `caller` allocated, and returns `memory`.
    void* allocated(void* memory, std::size_t size, const void* caller) {
        constexpr std::size_t kSmallest = 4096;
        if (memory == nullptr || size < kSmallest) {
            return memory;
        }
        const std::lock_guard lock(mMutex);
        const bool counts =
            mIsRunning && std::ranges::any_of(mOwners, [caller](const Range& owner) {
                return owner.contains(caller);
            });
        if (counts) {
            if (Block* place = find(nullptr)) {
                *place = {memory, size};
            }
            mBytes += size;
            mPeak = std::max(mPeak, mBytes);
        }
        return memory;
    }

    void freed(void* memory) {
        if (memory == nullptr) {
            return;
        }
        const std::lock_guard lock(mMutex);
        if (!mIsRunning) {
            return;
        }
        if (Block* block = find(memory)) {
            mBytes -= block->size;
            *block = {};
        }
    }

private:
    Block* find(void* memory) {
        auto* const found = std::ranges::find(mBlocks, memory, &Block::memory);
        return found != mBlocks.end() ? found : nullptr;
    }

    std::mutex mMutex;
    bool mIsRunning = false;
    std::array<Range, 2> mOwners;
    std::array<Block, 256> mBlocks; ///< once full, further blocks count as held to the end
    std::size_t mBytes = 0;
    std::size_t mPeak = 0;
};

constinit Meter mMeter;

/// Returns the address range of the library `name`, as the loader knows it; an empty name stands
/// for the program.
Range RangeOf(std::string_view name) {
    struct Search {
        std::string_view name;
        Range range;
    } search{name, {}};
    dl_iterate_phdr(
        [](dl_phdr_info* library, std::size_t, void* data) {
            auto& wanted = *static_cast<Search*>(data);
            if (wanted.name != library->dlpi_name) {
                return 0;
            }
            std::uintptr_t size = 0;
            for (int i = 0; i < library->dlpi_phnum; ++i) {
                const auto& segment = library->dlpi_phdr[i];
                if (segment.p_type == PT_LOAD) {
                    size = std::max<std::uintptr_t>(size, segment.p_vaddr + segment.p_memsz);
                }
            }
            wanted.range = {library->dlpi_addr, library->dlpi_addr + size};
            return 1;
        },
        &search);
    return search.range;
}

} // namespace

std::size_t PeakAllocatedBytes(std::string_view module, const std::function<void()>& run) {
    const Range range = RangeOf(module);
    if (range.end == 0) {
        throw std::invalid_argument("no loaded library is " + std::string(module));
    }
    struct Ending {
        ~Ending() { mMeter.end(); }
    };
    mMeter.begin(range, RangeOf(""));
    const Ending ending;
    run();
    return mMeter.end();
}

} // namespace Kerovane::Benchmarks

using Kerovane::Benchmarks::mMeter;

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

void* malloc(std::size_t size) {
    return mMeter.allocated(__libc_malloc(size), size, __builtin_return_address(0));
}

void* calloc(std::size_t count, std::size_t size) {
    return mMeter.allocated(__libc_calloc(count, size), count * size, __builtin_return_address(0));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return mMeter.allocated(__libc_memalign(alignment, size), size, __builtin_return_address(0));
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
    *memory = mMeter.allocated(__libc_memalign(alignment, size), size, __builtin_return_address(0));
    return *memory != nullptr ? 0 : ENOMEM;
}

void free(void* memory) {
    mMeter.freed(memory);
    __libc_free(memory);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

void* operator new(std::size_t size) {
    if (void* memory = __libc_malloc(size)) {
        return mMeter.allocated(memory, size, __builtin_return_address(0));
    }
    throw std::bad_alloc();
}

void* operator new[](std::size_t size) {
    if (void* memory = __libc_malloc(size)) {
        return mMeter.allocated(memory, size, __builtin_return_address(0));
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return mMeter.allocated(__libc_malloc(size), size, __builtin_return_address(0));
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return mMeter.allocated(__libc_malloc(size), size, __builtin_return_address(0));
}

void operator delete(void* memory) noexcept {
    free(memory);
}

void operator delete[](void* memory) noexcept {
    free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    free(memory);
}
