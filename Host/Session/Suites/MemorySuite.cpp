#include "Host/Session/Suites/HandlePool.h"
#include "Host/Session/Suites/Suites.h"

namespace Kerovane::Host {

namespace {

HandlePool mMemoryHandles;

/// Converts a memory suite's handle to the pool's type. The two types differ only in name.
PF_Handle Untyped(AEGP_MemHandle handle) {
    return reinterpret_cast<PF_Handle>(handle);
}

A_Err New(AEGP_PluginID, const A_char*, A_u_long size, AEGP_MemFlag, AEGP_MemHandle* handle) {
    if (handle == nullptr) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    *handle = reinterpret_cast<AEGP_MemHandle>(mMemoryHandles.make(size));
    return *handle != nullptr ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY;
}

A_Err Free(AEGP_MemHandle handle) {
    return mMemoryHandles.dispose(Untyped(handle)) ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM;
}

A_Err Lock(AEGP_MemHandle handle, void** data) {
    if (data == nullptr) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    *data = mMemoryHandles.lock(Untyped(handle));
    return *data != nullptr ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM;
}

/// Blocks never move, so unlocking only checks the handle.
A_Err Unlock(AEGP_MemHandle handle) {
    return mMemoryHandles.lock(Untyped(handle)) != nullptr ? PF_Err_NONE
                                                           : PF_Err_BAD_CALLBACK_PARAM;
}

A_Err Size(AEGP_MemHandle handle, A_u_long* size) {
    if (size == nullptr || mMemoryHandles.lock(Untyped(handle)) == nullptr) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    *size = static_cast<A_u_long>(mMemoryHandles.size(Untyped(handle)));
    return PF_Err_NONE;
}

} // namespace

const AEGP_MemorySuite1 kMemorySuite{.AEGP_NewMemHandle = New,
                                     .AEGP_FreeMemHandle = Free,
                                     .AEGP_LockMemHandle = Lock,
                                     .AEGP_UnlockMemHandle = Unlock,
                                     .AEGP_GetMemHandleSize = Size};

int LiveMemoryHandles() {
    return mMemoryHandles.live();
}

} // namespace Kerovane::Host
