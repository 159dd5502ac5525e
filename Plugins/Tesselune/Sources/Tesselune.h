#pragma once

#include "AE_Effect.h"

/**
 * The effect's one door, which the host calls with a command for everything that it wants. Commands
 * that the effect has no use for return 0 and do nothing. Two PF_Cmd_RENDER must not run at once.
 *
 * Returns 0, an error of the host's `add_param` as it is, or PF_Err_BAD_CALLBACK_PARAM: if the host
 * refuses a suite, a handle or the iteration over a float layer, if a frame's pixel format is none
 * of the three, or if a frame is sent while the effect isn't set up. Other failures of the host's
 * or of GL's are not reported; a frame that GL could not draw is transparent. An exception that is
 * not an int goes on to the caller, with everything released.
 *
 * A GL context that the host has current is current again after every command. If it has none, a
 * context of the effect's stays current after PF_Cmd_GLOBAL_SETUP and PF_Cmd_RENDER on the thread
 * that sent them; PF_Cmd_GLOBAL_SETDOWN leaves none on its thread.
 */
extern "C" __attribute__((visibility("default"))) PF_Err
EntryPointFunc(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
               PF_LayerDef* output, void* extra);
