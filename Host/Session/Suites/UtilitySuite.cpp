#include "Host/Session/Suites/Suites.h"

#include "AE_Effect.h"

#include <atomic>
#include <cstring>

namespace Kerovane::Host {

namespace {

A_Err Register(AEGP_GlobalRefcon, const A_char* name, AEGP_PluginID* id) {
    static std::atomic<AEGP_PluginID> mLastId = 0;
    if (name == nullptr || id == nullptr) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    *id = ++mLastId;
    return PF_Err_NONE;
}

/// Returns a memory handle with a copy of `text`, including its terminator, or null if memory is
/// exhausted.
AEGP_MemHandle TextHandle(AEGP_PluginID id, const char* text) {
    const auto size = static_cast<A_u_long>(std::strlen(text) + 1);
    AEGP_MemHandle handle = nullptr;
    void* data = nullptr;
    if (kMemorySuite.AEGP_NewMemHandle(id, "text", size, 0, &handle) == PF_Err_NONE &&
        kMemorySuite.AEGP_LockMemHandle(handle, &data) == PF_Err_NONE) {
        std::memcpy(data, text, size);
    }
    return handle;
}

A_Err ExecuteScript(AEGP_PluginID id, const A_char*, A_Boolean, AEGP_MemHandle* result,
                    AEGP_MemHandle* error) {
    if (result != nullptr) {
        *result = TextHandle(id, "");
    }
    if (error != nullptr) {
        *error = TextHandle(id, "This host has no script engine.");
    }
    return PF_Err_NONE;
}

} // namespace

const AEGP_UtilitySuite5 kUtilitySuite5{.AEGP_RegisterWithAEGP = Register,
                                        .AEGP_ExecuteScript = ExecuteScript};

const AEGP_UtilitySuite6 kUtilitySuite6{.AEGP_RegisterWithAEGP = Register,
                                        .AEGP_ExecuteScript = ExecuteScript};

} // namespace Kerovane::Host
