#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace Kerovane::Platform {

/**
 * A block of memory for the length of a scope, its content undefined. Where the system has large
 * pages, a block of several megabytes lies on them: the first touch of a frame's 33 megabytes then
 * costs a few page faults and not thousands.
 */
class LargeBlock {
public:
    /// Throws std::bad_alloc where there is no memory.
    explicit LargeBlock(std::size_t bytes);

    void* data() const { return mMemory.get(); }

private:
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };

    std::unique_ptr<void, Free> mMemory;
};

} // namespace Kerovane::Platform
