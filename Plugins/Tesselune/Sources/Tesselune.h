#pragma once

#include "AE_Effect.h"

/**
 * The effect's only entry point. The host calls it with a command; commands that the effect does
 * not handle return 0 and do nothing. Two PF_Cmd_RENDER must not run at once.
 *
 * Returns 0 on success and passes on an error of the host's `add_param`. Returns
 * PF_Err_BAD_CALLBACK_PARAM if the host refuses a suite, a handle or the iteration over a float
 * layer, if the pixel format is unknown, or if a frame is sent while the effect is not set up.
 * Other failures of the host or of GL are not reported; a frame that GL could not draw is
 * transparent. Exceptions other than int propagate to the caller, after all resources are released.
 *
 * If the host has a GL context current, it is current again after every command. If it has none, a
 * context of the effect stays current after PF_Cmd_GLOBAL_SETUP and PF_Cmd_RENDER on the thread
 * that sent them. PF_Cmd_GLOBAL_SETDOWN leaves none on its thread.
 */
extern "C" __attribute__((visibility("default"))) PF_Err
EntryPointFunc(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
               PF_LayerDef* output, void* extra);
