/*
 * The interface between a host and an effect: commands, error codes, flags, layers, parameters, and
 * the two records passed with every call.
 */
#ifndef AE_EFFECT_H
#define AE_EFFECT_H

#include "A.h"
#include "AE_EffectPixelFormat.h"

#include <assert.h>

#ifdef __cplusplus
extern "C" {
#endif

struct SPBasicSuite;

/* ---- Scalars ---- */

typedef A_long PF_Err;
typedef A_long PF_Cmd;
typedef A_long PF_ParamIndex;
typedef A_long PF_ParamType;
typedef A_long PF_ParamValue;
typedef A_long PF_Fixed; /* fixed point: the number times 65536 */
typedef A_u_char PF_Boolean;
typedef A_FpShort PF_FpShort;
typedef A_FpLong PF_FpLong;
typedef A_long PF_OutFlags;
typedef A_long PF_OutFlags2;
typedef A_long PF_ParamFlags;
typedef A_long PF_ParamUIFlags;
typedef A_long PF_WorldFlags;
typedef void** PF_Handle;

/* Identifies the effect instance to the host's callbacks; opaque to the effect. */
typedef struct PF_ProgressInfo* PF_ProgPtr;

/* ---- Error codes ---- */

enum {
    PF_Err_NONE = 0,
    PF_Err_OUT_OF_MEMORY = 4,
    PF_Err_INTERNAL_STRUCT_DAMAGED = 512,
    PF_Err_INVALID_INDEX = 513,
    PF_Err_UNRECOGNIZED_PARAM_TYPE = 514,
    PF_Err_INVALID_CALLBACK = 515,
    PF_Err_BAD_CALLBACK_PARAM = 516,
    PF_Interrupt_CANCEL = 517
};

/* ---- Commands ---- */

enum {
    PF_Cmd_ABOUT = 0,
    PF_Cmd_GLOBAL_SETUP,
    PF_Cmd_UNUSED_0,
    PF_Cmd_GLOBAL_SETDOWN,
    PF_Cmd_PARAMS_SETUP,
    PF_Cmd_SEQUENCE_SETUP,
    PF_Cmd_SEQUENCE_RESETUP,
    PF_Cmd_SEQUENCE_FLATTEN,
    PF_Cmd_SEQUENCE_SETDOWN,
    PF_Cmd_DO_DIALOG,
    PF_Cmd_FRAME_SETUP,
    PF_Cmd_RENDER,
    PF_Cmd_FRAME_SETDOWN,
    PF_Cmd_USER_CHANGED_PARAM,
    PF_Cmd_UPDATE_PARAMS_UI,
    PF_Cmd_EVENT
};

/* ---- What an effect declares ---- */

/* Version 0 to 7, subversion and patch level 0 to 15, stage 0 to 3, build 0 to 511. */
#define PF_VERSION(version, subversion, patch, stage, build)                                       \
    ((A_u_long)(version) << 19 | (A_u_long)(subversion) << 15 | (A_u_long)(patch) << 11 |          \
     (A_u_long)(stage) << 9 | (A_u_long)(build))

#define PF_Version_VERS(version) (((version) >> 19) & 0x7)
#define PF_Version_SUBVERS(version) (((version) >> 15) & 0xf)
#define PF_Version_BUGVERS(version) (((version) >> 11) & 0xf)
#define PF_Version_STAGE(version) (((version) >> 9) & 0x3)
#define PF_Version_BUILD(version) ((version)&0x1ff)

enum { PF_Stage_DEVELOP = 0, PF_Stage_ALPHA, PF_Stage_BETA, PF_Stage_RELEASE };

enum {
    PF_OutFlag_NONE = 0,
    PF_OutFlag_WIDE_TIME_INPUT = 1 << 1,
    PF_OutFlag_DISPLAY_ERROR_MESSAGE = 1 << 8,
    PF_OutFlag_I_EXPAND_BUFFER = 1 << 9,
    PF_OutFlag_I_SHRINK_BUFFER = 1 << 12,
    PF_OutFlag_CUSTOM_UI = 1 << 15,
    PF_OutFlag_DEEP_COLOR_AWARE = 1 << 25
};

enum { PF_OutFlag2_NONE = 0, PF_OutFlag2_FLOAT_COLOR_AWARE = 1 << 12 };

/* ---- Pixels and layers ---- */

typedef struct {
    A_u_char alpha, red, green, blue; /* 0 to 255 */
} PF_Pixel;

typedef PF_Pixel PF_Pixel8;
typedef PF_Pixel* PF_PixelPtr;

typedef struct {
    A_u_short alpha, red, green, blue; /* 0 to 32768 */
} PF_Pixel16;

typedef struct {
    PF_FpShort alpha, red, green, blue; /* nominally 0.0 to 1.0 */
} PF_PixelFloat;

typedef struct {
    A_long left, top, right, bottom;
} PF_Rect;

typedef struct {
    A_long h, v;
} PF_Point;

typedef struct {
    A_long num;
    A_u_long den;
} PF_RationalScale;

enum { PF_WorldFlag_DEEP = 1 << 0, PF_WorldFlag_WRITEABLE = 1 << 1 };

/* A layer, also called a world: rows of pixels, the first row on top. */
typedef struct PF_LayerDef {
    void* reserved0;
    void* reserved1;
    PF_WorldFlags world_flags;
    PF_PixelPtr data; /* the first row; typed access goes through get_pixel_data8 and 16 */
    A_long rowbytes;  /* distance from row to row in bytes, padding included */
    A_long width;     /* pixels */
    A_long height;    /* pixels */
    PF_Rect extent_hint;
    void* platform_ref;
    PF_RationalScale pix_aspect_ratio;
    A_long origin_x;
    A_long origin_y;
    A_long dephault;
} PF_LayerDef;

typedef PF_LayerDef PF_EffectWorld;

/* ---- Parameters ---- */

enum {
    PF_Param_RESERVED = -1,
    PF_Param_LAYER = 0,
    PF_Param_SLIDER,
    PF_Param_FIX_SLIDER,
    PF_Param_ANGLE,
    PF_Param_CHECKBOX,
    PF_Param_COLOR,
    PF_Param_POINT,
    PF_Param_POPUP,
    PF_Param_CUSTOM,
    PF_Param_NO_DATA,
    PF_Param_FLOAT_SLIDER,
    PF_Param_ARBITRARY_DATA,
    PF_Param_PATH,
    PF_Param_GROUP_START,
    PF_Param_GROUP_END,
    PF_Param_BUTTON
};

enum {
    PF_ParamFlag_NONE = 0,
    PF_ParamFlag_CANNOT_TIME_VARY = 1 << 1,
    PF_ParamFlag_SUPERVISE = 1 << 6
};

enum { PF_ValueDisplayFlag_NONE = 0, PF_ValueDisplayFlag_PERCENT = 1 << 0 };

enum { PF_MAX_EFFECT_PARAM_NAME_LEN = 31, PF_MAX_EFFECT_MSG_LEN = 255 };

typedef struct {
    PF_ParamValue value;
    A_char value_str[32];
    A_char value_desc[32];
    PF_ParamValue valid_min, valid_max;   /* limits of a typed value */
    PF_ParamValue slider_min, slider_max; /* ends of the slider */
    PF_ParamValue dephault;
} PF_SliderDef;

typedef struct {
    PF_Fixed value;
    A_char value_str[32];
    A_char value_desc[32];
    PF_Fixed valid_min, valid_max;
    PF_Fixed slider_min, slider_max;
    PF_Fixed dephault;
    A_short precision; /* number of decimals shown */
    A_short display_flags;
} PF_FixedSliderDef;

typedef struct {
    PF_FpLong value;
    PF_FpLong phase;
    A_char value_desc[32];
    PF_FpShort valid_min, valid_max;
    PF_FpShort slider_min, slider_max;
    PF_FpShort dephault;
    A_short precision;
    A_short display_flags;
    A_u_long fs_flags;
    PF_FpShort curve_tolerance;
    PF_Boolean useExponent;
    PF_FpShort exponent;
} PF_FloatSliderDef;

typedef struct {
    PF_Fixed value; /* degrees */
    PF_Fixed dephault;
    PF_Fixed valid_min, valid_max;
} PF_AngleDef;

typedef struct {
    PF_ParamValue value; /* 0 is off */
    PF_Boolean dephault;
    union {
        const A_char* nameptr; /* the label beside the box */
    } u;
} PF_CheckBoxDef;

typedef struct {
    PF_ParamValue value; /* number of the choice, from 1 */
    A_short num_choices;
    A_short dephault;
    union {
        const A_char* namesptr; /* choices separated by '|'; the host keeps the pointer */
    } u;
} PF_PopupDef;

typedef union {
    PF_LayerDef ld;
    PF_SliderDef sd;
    PF_FixedSliderDef fd;
    PF_FloatSliderDef fs_d;
    PF_AngleDef ad;
    PF_CheckBoxDef bd;
    PF_PopupDef pd;
} PF_ParamDefUnion;

typedef struct PF_ParamDef {
    union {
        A_long id; /* the disk id, by which values are stored */
        A_long change_flags;
    } uu;
    PF_ParamUIFlags ui_flags;
    A_short ui_width;
    A_short ui_height;
    PF_ParamType param_type;
    A_char name[PF_MAX_EFFECT_PARAM_NAME_LEN + 1];
    PF_ParamFlags flags;
    A_long unused;
    PF_ParamDefUnion u;
} PF_ParamDef;

#ifdef __cplusplus
}
#endif

#include "AE_EffectCB.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- The records of a call ---- */

/* Input of a call, from the host to the effect. */
typedef struct PF_InData {
    PF_InteractCallbacks inter;
    PF_UtilCallbacks* utils;
    PF_ProgPtr effect_ref;
    A_long quality;
    A_long serial_num;
    A_long appl_id;
    A_long num_params;
    A_long what_cpu;
    A_long what_fpu;
    A_long current_time; /* in units of 1 / time_scale seconds, as the three below */
    A_long time_step;
    A_long total_time;
    A_long local_time_step;
    A_u_long time_scale;
    A_long width; /* of the layer at full resolution, pixels */
    A_long height;
    PF_Rect extent_hint;
    A_long output_origin_x;
    A_long output_origin_y;
    PF_RationalScale downsample_x; /* 1/1 at full resolution, 1/2 at half */
    PF_RationalScale downsample_y;
    PF_RationalScale pixel_aspect_ratio;
    A_long in_flags;
    PF_Handle global_data;
    PF_Handle sequence_data;
    PF_Handle frame_data;
    struct SPBasicSuite* pica_basicP;
    A_long pre_effect_source_origin_x;
    A_long pre_effect_source_origin_y;
} PF_InData;

/* Output of a call, from the effect to the host. */
typedef struct PF_OutData {
    A_u_long my_version;
    A_char name[PF_MAX_EFFECT_PARAM_NAME_LEN + 1];
    PF_Handle global_data;
    A_long num_params;
    PF_Handle sequence_data;
    A_long flat_sdata_size;
    PF_Handle frame_data;
    A_long width;
    A_long height;
    PF_Point origin;
    PF_OutFlags out_flags;
    A_char return_msg[PF_MAX_EFFECT_MSG_LEN + 1];
    PF_OutFlags2 out_flags2;
} PF_OutData;

/* The effect's entry point. Its name in the module is given by the module's property resource. */
typedef PF_Err (*PF_EffectEntry)(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data,
                                 PF_ParamDef* params[], PF_LayerDef* output, void* extra);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(PF_Pixel) == 4 && sizeof(PF_Pixel16) == 8 && sizeof(PF_PixelFloat) == 16,
              "pixels are packed");
static_assert(PF_Err_NONE == 0 && PF_Err_OUT_OF_MEMORY == 4 &&
                  PF_Err_INTERNAL_STRUCT_DAMAGED == 512 && PF_Err_INVALID_INDEX == 513 &&
                  PF_Err_UNRECOGNIZED_PARAM_TYPE == 514 && PF_Err_INVALID_CALLBACK == 515 &&
                  PF_Err_BAD_CALLBACK_PARAM == 516 && PF_Interrupt_CANCEL == 517,
              "error codes");
static_assert(PF_Cmd_ABOUT == 0 && PF_Cmd_GLOBAL_SETUP == 1 && PF_Cmd_UNUSED_0 == 2 &&
                  PF_Cmd_GLOBAL_SETDOWN == 3 && PF_Cmd_PARAMS_SETUP == 4 &&
                  PF_Cmd_SEQUENCE_SETUP == 5 && PF_Cmd_SEQUENCE_RESETUP == 6 &&
                  PF_Cmd_SEQUENCE_FLATTEN == 7 && PF_Cmd_SEQUENCE_SETDOWN == 8 &&
                  PF_Cmd_DO_DIALOG == 9 && PF_Cmd_FRAME_SETUP == 10 && PF_Cmd_RENDER == 11 &&
                  PF_Cmd_FRAME_SETDOWN == 12 && PF_Cmd_USER_CHANGED_PARAM == 13 &&
                  PF_Cmd_UPDATE_PARAMS_UI == 14 && PF_Cmd_EVENT == 15,
              "command codes");
static_assert(sizeof(((PF_OutData*)0)->return_msg) == 256, "a message with its terminator");
static_assert(PF_Param_SLIDER == 1 && PF_Param_FIX_SLIDER == 2 && PF_Param_ANGLE == 3 &&
                  PF_Param_CHECKBOX == 4 && PF_Param_POPUP == 7 && PF_Param_FLOAT_SLIDER == 10 &&
                  PF_Param_GROUP_START == 13 && PF_Param_GROUP_END == 14,
              "parameter types");
static_assert(PF_OutFlag_WIDE_TIME_INPUT == 2 && PF_OutFlag_DISPLAY_ERROR_MESSAGE == 256 &&
                  PF_OutFlag_CUSTOM_UI == 32768 && PF_OutFlag_DEEP_COLOR_AWARE == 33554432 &&
                  PF_ParamFlag_SUPERVISE == 0x40 && PF_ValueDisplayFlag_PERCENT == 1,
              "flags");
static_assert(PF_VERSION(1, 0, 0, PF_Stage_DEVELOP, 1) == 0x80001, "version packing");

#endif
