#include "LargeBlock.h"

#include <sys/mman.h>

#include <algorithm>
#include <limits>
#include <new>

namespace Kerovane::Platform {

namespace {

constexpr std::size_t kLargePage = std::size_t{2} << 20;

/// On whole large pages, which the kernel gives where it has them.
void* AllocateOnLargePages(std::size_t bytes) {
    if (bytes > std::numeric_limits<std::size_t>::max() - kLargePage) {
        return nullptr;
    }
    const std::size_t rounded = (bytes + kLargePage - 1) / kLargePage * kLargePage;
    void* const memory = std::aligned_alloc(kLargePage, rounded);
    if (memory != nullptr) {
        madvise(memory, rounded, MADV_HUGEPAGE); // advice: nothing is lost where it is not taken
    }
    return memory;
}

} // namespace

LargeBlock::LargeBlock(std::size_t bytes)
    : mMemory(bytes < 2 * kLargePage ? std::malloc(std::max<std::size_t>(bytes, 1))
                                     : AllocateOnLargePages(bytes)) {
    if (mMemory == nullptr) {
        throw std::bad_alloc();
    }
}

} // namespace Kerovane::Platform
