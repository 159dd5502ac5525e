/*
 * Suites of the host that are not bound to an effect call: registration, scripts and memory.
 */
#ifndef AE_GENERAL_PLUG_H
#define AE_GENERAL_PLUG_H

#include "A.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef A_long AEGP_PluginID;
typedef A_long AEGP_MemFlag;
typedef struct AEGP_GlobalRefconRecord* AEGP_GlobalRefcon;
typedef struct AEGP_MemHandleRecord** AEGP_MemHandle;

/* "AEGP Utility Suite", version 11. */
typedef struct AEGP_UtilitySuite5 {
    A_Err (*AEGP_RegisterWithAEGP)(AEGP_GlobalRefcon refcon, const A_char* plugin_name,
                                   AEGP_PluginID* plugin_id);
    /*
     * Runs a script. The handles receive the zero-terminated texts of the result and the error; the
     * caller frees them.
     */
    A_Err (*AEGP_ExecuteScript)(AEGP_PluginID plugin_id, const A_char* script,
                                A_Boolean platform_encoding, AEGP_MemHandle* result,
                                AEGP_MemHandle* error);
} AEGP_UtilitySuite5;

/* "AEGP Utility Suite", version 13. */
typedef struct AEGP_UtilitySuite6 {
    A_Err (*AEGP_RegisterWithAEGP)(AEGP_GlobalRefcon refcon, const A_char* plugin_name,
                                   AEGP_PluginID* plugin_id);
    A_Err (*AEGP_ExecuteScript)(AEGP_PluginID plugin_id, const A_char* script,
                                A_Boolean platform_encoding, AEGP_MemHandle* result,
                                AEGP_MemHandle* error);
} AEGP_UtilitySuite6;

/* "AEGP Memory Suite", version 1. */
typedef struct AEGP_MemorySuite1 {
    A_Err (*AEGP_NewMemHandle)(AEGP_PluginID plugin_id, const A_char* what, A_u_long size,
                               AEGP_MemFlag flags, AEGP_MemHandle* handle);
    A_Err (*AEGP_FreeMemHandle)(AEGP_MemHandle handle);
    A_Err (*AEGP_LockMemHandle)(AEGP_MemHandle handle, void** data);
    A_Err (*AEGP_UnlockMemHandle)(AEGP_MemHandle handle);
    A_Err (*AEGP_GetMemHandleSize)(AEGP_MemHandle handle, A_u_long* size);
} AEGP_MemorySuite1;

#ifdef __cplusplus
}
#endif

#endif
