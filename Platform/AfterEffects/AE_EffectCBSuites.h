/*
 * Suites for effects, acquired by name and version through SPBasicSuite.
 */
#ifndef AE_EFFECT_CB_SUITES_H
#define AE_EFFECT_CB_SUITES_H

#include "AE_Effect.h"

#ifdef __cplusplus
extern "C" {
#endif

/* "PF ANSI Suite", version 1. */
typedef struct PF_ANSICallbacksSuite1 {
    A_long (*sprintf)(A_char* text, const A_char* format, ...);
    A_char* (*strcpy)(A_char* destination, const A_char* source);
} PF_ANSICallbacksSuite1;

/* "PF Handle Suite", versions 1 and 2. */
typedef struct PF_HandleSuite1 {
    PF_Handle (*host_new_handle)(A_HandleSize size); /* null if there is no memory */
    void* (*host_lock_handle)(PF_Handle handle);
    void (*host_unlock_handle)(PF_Handle handle);
    void (*host_dispose_handle)(PF_Handle handle);
    A_HandleSize (*host_get_handle_size)(PF_Handle handle);
} PF_HandleSuite1;

typedef PF_Err (*PF_IteratePixelFloatFunc)(void* refcon, A_long x, A_long y, PF_PixelFloat* in,
                                           PF_PixelFloat* out);

/* "PF iterateFloat Suite", version 1. */
typedef struct PF_iterateFloatSuite1 {
    /* Calls `pixel_function` once for each pixel of `area` (null: the whole of `source`), with the
       pixels of both worlds. Stops at the function's first error and returns it. */
    PF_Err (*iterate)(PF_InData* in_data, A_long progress_base, A_long progress_final,
                      PF_EffectWorld* source, const PF_Rect* area, void* refcon,
                      PF_IteratePixelFloatFunc pixel_function, PF_EffectWorld* destination);
} PF_iterateFloatSuite1;

/* "PF World Suite", version 2. */
typedef struct PF_WorldSuite2 {
    PF_Err (*PF_NewWorld)(PF_ProgPtr effect_ref, A_long width, A_long height, PF_Boolean clear,
                          PF_PixelFormat format, PF_EffectWorld* world);
    PF_Err (*PF_DisposeWorld)(PF_ProgPtr effect_ref, PF_EffectWorld* world);
    PF_Err (*PF_GetPixelFormat)(const PF_EffectWorld* world, PF_PixelFormat* format);
} PF_WorldSuite2;

#ifdef __cplusplus
}
#endif

#endif
