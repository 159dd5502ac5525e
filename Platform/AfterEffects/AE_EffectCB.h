/*
 * Callbacks that the host passes in PF_InData with every call. Included by AE_Effect.h, which
 * declares the types.
 */
/*
 * Includes AE_Effect.h before the include guard: AE_Effect.h in turn includes this header once it
 * has declared the types.
 */
#include "AE_Effect.h"

#ifndef AE_EFFECT_CB_H
#define AE_EFFECT_CB_H

#ifdef __cplusplus
extern "C" {
#endif

/* Interaction with the host about parameters, progress and interruption. */
typedef struct PF_InteractCallbacks {
    /* Fills `param` with the parameter's value at `what_time`. Each checkout needs a checkin. */
    PF_Err (*checkout_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long what_time,
                             A_long time_step, A_u_long time_scale, PF_ParamDef* param);
    PF_Err (*checkin_param)(PF_ProgPtr effect_ref, PF_ParamDef* param);
    /* Adds a parameter at `index`; -1 appends. The host copies `def`. */
    PF_Err (*add_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, PF_ParamDef* def);
    /* Returns an error other than PF_Err_NONE if the user has asked to stop. */
    PF_Err (*abort)(PF_ProgPtr effect_ref);
    PF_Err (*progress)(PF_ProgPtr effect_ref, A_long current, A_long total);
} PF_InteractCallbacks;

/* The host's C library, for effects that link none of their own. */
typedef struct PF_ANSICallbacks {
    A_long (*sprintf)(A_char* text, const A_char* format, ...);
    A_char* (*strcpy)(A_char* destination, const A_char* source);
} PF_ANSICallbacks;

/* Utilities: handles and access to pixels. */
typedef struct PF_UtilCallbacks {
    PF_Handle (*host_new_handle)(A_HandleSize size);
    void* (*host_lock_handle)(PF_Handle handle);
    void (*host_unlock_handle)(PF_Handle handle);
    void (*host_dispose_handle)(PF_Handle handle);
    A_HandleSize (*host_get_handle_size)(PF_Handle handle);
    PF_ANSICallbacks ansi;
    /*
     * Writes to `out` the address of the world's first pixel, or of the pixel that `pixels` names
     * if it is not null. Writes null if the world has another depth.
     */
    PF_Err (*get_pixel_data8)(PF_EffectWorld* world, PF_PixelPtr pixels, PF_Pixel8** out);
    PF_Err (*get_pixel_data16)(PF_EffectWorld* world, PF_PixelPtr pixels, PF_Pixel16** out);
} PF_UtilCallbacks;

#ifdef __cplusplus
}
#endif

#endif
