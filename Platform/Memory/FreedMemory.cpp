#include "Platform/Memory/FreedMemory.h"

#include <malloc.h>

namespace Kerovane::Platform {

void KeepFreedMemory() {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
    // One arena, because a block that one thread freed is often reused by another: different
    // threads read, draw and write a frame.
    mallopt(M_ARENA_MAX, 1);
}

} // namespace Kerovane::Platform
