#include "Platform/Memory/FreedMemory.h"

#include <malloc.h>

namespace Kerovane::Platform {

void KeepFreedMemory() {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
    // Frames are read, drawn and written by different threads, and each takes what another freed.
    mallopt(M_ARENA_MAX, 1);
}

} // namespace Kerovane::Platform
