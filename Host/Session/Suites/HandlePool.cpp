#include "Host/Session/Suites/HandlePool.h"

#include "Host/Session/World.h"

#include <new>
#include <utility>

namespace Kerovane::Host {

PF_Handle HandlePool::make(A_HandleSize size) {
    constexpr A_HandleSize kLargest =
        A_HandleSize{World::kMaxSide} * World::kMaxSide * sizeof(PF_PixelFloat);
    if (size > kLargest) {
        return nullptr;
    }
    // At least one byte, so that an empty block has an address too. Not zeroed, because the effect
    // fills the block.
    std::unique_ptr<std::byte[]> memory(new (std::nothrow) std::byte[size > 0 ? size : 1]);
    if (memory == nullptr) {
        return nullptr;
    }
    auto block = std::make_unique<Block>();
    *block = {.data = memory.get(), .size = size, .memory = std::move(memory)};
    PF_Handle handle = &block->data;
    const std::lock_guard lock(mMutex);
    mBlocks.emplace(handle, std::move(block));
    return handle;
}

void* HandlePool::lock(PF_Handle handle) {
    const std::lock_guard lock(mMutex);
    const auto found = mBlocks.find(handle);
    return found != mBlocks.end() ? found->second->data : nullptr;
}

bool HandlePool::dispose(PF_Handle handle) {
    const std::lock_guard lock(mMutex);
    return mBlocks.erase(handle) != 0;
}

A_HandleSize HandlePool::size(PF_Handle handle) {
    const std::lock_guard lock(mMutex);
    const auto found = mBlocks.find(handle);
    return found != mBlocks.end() ? found->second->size : 0;
}

int HandlePool::live() {
    const std::lock_guard lock(mMutex);
    return static_cast<int>(mBlocks.size());
}

} // namespace Kerovane::Host
