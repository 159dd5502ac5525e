#pragma once

namespace Kerovane::Platform {

/**
 * Lets the process keep the memory that it frees, for its next frame. Otherwise the allocator gives
 * blocks of 32 MiB and more back to the kernel at once, and the next frame pays for the same pages
 * again, one fault for each 4 KiB.
 *
 * For programs, at their start; a plug-in must not set up its host's allocator.
 */
void KeepFreedMemory();

} // namespace Kerovane::Platform
