#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace Kerovane::Benchmarks {

/**
 * Runs `run` and returns the peak of the heap memory, in bytes, that the module and the program,
 * including the host, allocated during the run. Blocks below 4 KiB and allocations of other
 * libraries, such as the driver, do not count. Only one measurement at a time.
 *
 * Replaces the process's allocation functions, so the program must export its symbols. `module` is
 * the path of a loaded library; throws std::invalid_argument if no loaded library has it.
 */
std::size_t PeakAllocatedBytes(std::string_view module, const std::function<void()>& run);

} // namespace Kerovane::Benchmarks
