#pragma once

#include <atomic>
#include <cstddef>
#include <functional>

namespace Kerovane::Host {

/**
 * The stages that each item goes through, one after the other; they are called with its index and
 * must not throw. Those of different items overlap. `read` and `render` answer whether the item
 * goes on to the next stage.
 */
struct PipelineStages {
    std::function<bool(std::size_t)> read;   ///< on any worker thread
    std::function<bool(std::size_t)> render; ///< on the thread that runs the pipeline
    std::function<void(std::size_t)> write;  ///< on any worker thread
};

struct PipelineLimits {
    std::size_t threads = 1;       ///< that read and write, beside the one that renders
    std::size_t itemsInFlight = 1; ///< that have begun and not ended
};

/**
 * Takes the items 0 to `count` - 1 through the stages. They begin in order and may end in another.
 * Once `stop` is true no further item begins; those that have begun go through to their end. Works
 * with fewer threads where the system gives no more; throws std::system_error where it gives none.
 */
void RunPipeline(std::size_t count, PipelineLimits limits, const PipelineStages& stages,
                 const std::atomic<bool>& stop);

} // namespace Kerovane::Host
