#pragma once

namespace Kerovane::Platform {

/**
 * Makes the process keep freed memory for its next frame. By default the allocator returns blocks
 * of 32 MiB and more to the kernel at once, and the next frame then pays one page fault for each 4
 * KiB.
 *
 * Call it at the start of a program. A plug-in must not: the allocator is its host's.
 */
void KeepFreedMemory();

} // namespace Kerovane::Platform
