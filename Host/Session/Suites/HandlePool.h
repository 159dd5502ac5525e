#pragma once

#include "AE_Effect.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace Kerovane::Host {

/**
 * Memory blocks that the effect holds by handle. Handles that are unknown or already disposed of
 * are detected without being dereferenced. Thread-safe.
 */
class HandlePool {
public:
    /// Returns a new block with undefined content. Returns null if memory is exhausted or `size`
    /// exceeds the pixel bytes of the largest world.
    PF_Handle make(A_HandleSize size);

    /// Returns the block's address, or null for an unknown handle.
    void* lock(PF_Handle handle);

    /// Frees the block. Returns false for an unknown handle.
    bool dispose(PF_Handle handle);

    /// Returns the block's size in bytes, or 0 for an unknown handle.
    A_HandleSize size(PF_Handle handle);

    int live();

private:
    struct Block {
        void* data; ///< the handle is the address of this pointer
        A_HandleSize size;
        std::unique_ptr<std::byte[]> memory;
    };

    std::mutex mMutex;
    std::unordered_map<PF_Handle, std::unique_ptr<Block>> mBlocks;
};

} // namespace Kerovane::Host
