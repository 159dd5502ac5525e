#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace Kerovane::Benchmarks {

/**
 * The most bytes that a module and the program itself, the host in it, hold together at a time in
 * blocks of the heap that were made since `run` began. What other libraries allocate, the driver
 * above all, does not count, nor do blocks below 4 KiB. One measurement at a time.
 *
 * Replaces the process's allocation functions, so the program has to export its symbols.
 * `module` is the path of a loaded library; throws std::invalid_argument if none has it.
 */
std::size_t PeakAllocatedBytes(std::string_view module, const std::function<void()>& run);

} // namespace Kerovane::Benchmarks
