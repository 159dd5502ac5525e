#pragma once

#include "AE_Effect.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace Kerovane::Host {

/**
 * Blocks of memory that the effect holds by handle. A handle that the pool didn't give out, or took
 * back already, is refused, never touched. Safe to use from several threads at once.
 */
class HandlePool {
public:
    /// A new block, its bytes undefined; null if there is no memory or `size` is beyond the
    /// pixels of the largest world.
    PF_Handle make(A_HandleSize size);

    /// The block; null for a handle that isn't alive.
    void* lock(PF_Handle handle);

    /// False for a handle that isn't alive.
    bool dispose(PF_Handle handle);

    /// Bytes; 0 for a handle that isn't alive.
    A_HandleSize size(PF_Handle handle);

    int live();

private:
    struct Block {
        void* data; ///< a handle is the address of this
        A_HandleSize size;
        std::unique_ptr<std::byte[]> memory;
    };

    std::mutex mMutex;
    std::unordered_map<PF_Handle, std::unique_ptr<Block>> mBlocks;
};

} // namespace Kerovane::Host
