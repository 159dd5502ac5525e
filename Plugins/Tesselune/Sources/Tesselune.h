#pragma once

#include "AE_Effect.h"

/**
 * The effect's one door, which the host calls with a command for everything that it wants. Returns
 * 0, or PF_Err_BAD_CALLBACK_PARAM where anything failed inside the command; an error of the host's
 * `add_param` comes back as it is. Commands that the effect has no use for return 0 and do nothing.
 * Two PF_Cmd_RENDER must not run at once.
 *
 * Every command leaves the host's GL context as it found it. An exception that is not an int goes
 * on to the caller, with everything released.
 */
extern "C" __attribute__((visibility("default"))) PF_Err
EntryPointFunc(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
               PF_LayerDef* output, void* extra);
